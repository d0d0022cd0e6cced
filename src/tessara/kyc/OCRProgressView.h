#pragma once

#include <QColor>
#include <QWidget>

class QVariantAnimation;

namespace tessara {

// The thin bar that shows how far the reading of the document has come: the theme's tint over a
// half-transparent black track, with fully rounded ends.
class OCRProgressView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double progress READ progress)
public:
    static constexpr int kAnimationMs = 250;

    explicit OCRProgressView(QWidget* parent = nullptr);

    void setProgressTintColor(const QColor& color);
    // 0 to 1. With `animated` the bar moves there in a short animation; progress() is the target.
    void setProgress(double progress, bool animated);
    double progress() const { return progress_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVariantAnimation* animation_ = nullptr; // child
    QColor tint_;
    double progress_ = 0.0;
    double shown_ = 0.0;
};

} // namespace tessara
