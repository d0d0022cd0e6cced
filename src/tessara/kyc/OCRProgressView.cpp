#include "tessara/kyc/OCRProgressView.h"

#include <QPainter>
#include <QPainterPath>
#include <QVariantAnimation>
#include <algorithm>

namespace tessara {

OCRProgressView::OCRProgressView(QWidget* parent)
    : QWidget(parent)
    , animation_(new QVariantAnimation(this)) {
    setObjectName(QStringLiteral("progressView"));
    animation_->setDuration(kAnimationMs);
    animation_->setEasingCurve(QEasingCurve::OutCubic);
    connect(animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        shown_ = value.toDouble();
        update();
    });
}

void OCRProgressView::setProgressTintColor(const QColor& color) {
    tint_ = color;
    update();
}

void OCRProgressView::setProgress(double progress, bool animated) {
    progress = std::clamp(progress, 0.0, 1.0);
    animation_->stop();
    progress_ = progress;
    if (animated && isVisible()) {
        animation_->setStartValue(shown_);
        animation_->setEndValue(progress);
        animation_->start();
    } else {
        shown_ = progress;
        update();
    }
}

void OCRProgressView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath track;
    track.addRoundedRect(QRectF(rect()), 4, 4);
    painter.setClipPath(track);
    painter.fillRect(rect(), QColor(0, 0, 0, 128));
    painter.fillRect(QRectF(0, 0, width() * shown_, height()), tint_);
}

} // namespace tessara
