#pragma once

#include "tessara/form/TSRControl.h"

#include <QWidget>

class QLabel;

namespace tessara {

// The logo of the closing screen: the host application's image "MFG-Logo" (a Qt resource
// ":/MFG-Logo.png" or ":/MFG-Logo"), 240 wide, centred, in a view three times its height.
class TSRA1ImageView : public QWidget, public TSRControl {
    Q_OBJECT
public:
    explicit TSRA1ImageView(QWidget* parent = nullptr);

    void setup() override;
    QWidget* widget() override { return this; }
    QSize sizeHint() const override;

    QLabel* imageView() const { return imageView_; }
    // True when the host's logo was found.
    bool hasImage() const { return hasImage_; }

    static constexpr int kImageWidth = 240;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QLabel* imageView_ = nullptr;
    bool hasImage_ = false;
    double ratio_ = 1.0;
};

} // namespace tessara
