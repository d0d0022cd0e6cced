#include "tessara/kyc/CutoutImageView.h"

#include <QPainter>

namespace tessara {

CutoutImageView::CutoutImageView(QWidget* parent)
    : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CutoutImageView::setImage(const QImage& image) {
    image_ = image;
    update();
}

void CutoutImageView::paintEvent(QPaintEvent*) {
    if (image_.isNull() || width() <= 0 || height() <= 0)
        return;
    const double scale = std::max(double(width()) / image_.width(), double(height()) / image_.height());
    QSizeF drawn(image_.width() * scale, image_.height() * scale);
    QRectF target(QPointF(0, 0), drawn);
    target.moveCenter(QRectF(rect()).center());
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image_);
}

} // namespace tessara
