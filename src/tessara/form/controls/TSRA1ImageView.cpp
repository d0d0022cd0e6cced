#include "tessara/form/controls/TSRA1ImageView.h"

#include <QImageReader>
#include <QLabel>
#include <QPixmap>
#include <cmath>

namespace tessara {

namespace {
// The host application ships its logo as a Qt resource under one of these names.
QImage loadHostLogo() {
    for (const char* name : {":/MFG-Logo.png", ":/MFG-Logo"}) {
        QImageReader reader(QString::fromLatin1(name));
        const QImage image = reader.read();
        if (!image.isNull())
            return image;
    }
    return {};
}

int imageHeight(double ratio) {
    return int(std::lround(TSRA1ImageView::kImageWidth * ratio));
}
} // namespace

TSRA1ImageView::TSRA1ImageView(QWidget* parent)
    : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TSRA1ImageView::setup() {
    applyAccessibilityIdentifier();
    imageView_ = new QLabel(this);
    imageView_->setObjectName(accessibilityIdentifier() + QStringLiteral(".imageView"));
    imageView_->setAlignment(Qt::AlignCenter);
    const QImage image = loadHostLogo();
    hasImage_ = !image.isNull() && image.width() > 0;
    ratio_ = hasImage_ ? double(image.height()) / double(image.width()) : 1.0;
    if (hasImage_) {
        // Scaled once for this screen's density, so the logo stays sharp.
        const double dpr = devicePixelRatioF();
        QPixmap pixmap = QPixmap::fromImage(image.scaled(
            QSize(int(std::lround(kImageWidth * dpr)), int(std::lround(imageHeight(ratio_) * dpr))),
            Qt::KeepAspectRatio, Qt::SmoothTransformation));
        pixmap.setDevicePixelRatio(dpr);
        imageView_->setPixmap(pixmap);
    }
    imageView_->setFixedSize(kImageWidth, imageHeight(ratio_));
    setFixedHeight(3 * imageHeight(ratio_));
    updateGeometry();
}

QSize TSRA1ImageView::sizeHint() const {
    return {kImageWidth, 3 * imageHeight(ratio_)};
}

void TSRA1ImageView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (imageView_)
        imageView_->move((width() - imageView_->width()) / 2, (height() - imageView_->height()) / 2);
}

} // namespace tessara
