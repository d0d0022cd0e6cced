#pragma once

#include <QWidget>

class QPushButton;

namespace tessara {

class ActivityIndicator;

// The calculator's continue button over its loading indicator, in one view: the button fills
// the view and the indicator sits centred beneath it, so a button made see-through shows the
// indicator. Main thread only.
class ContinueButtonRow : public QWidget {
    Q_OBJECT
public:
    ContinueButtonRow(const QString& title, QWidget* parent = nullptr);

    QPushButton* button() const { return button_; }
    ActivityIndicator* loadingIndicator() const { return indicator_; }

    // 0 makes the button vanish and take no taps, revealing the indicator; 1 brings it back.
    void setButtonAlpha(double alpha);

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* button_;
    ActivityIndicator* indicator_;
};

} // namespace tessara
