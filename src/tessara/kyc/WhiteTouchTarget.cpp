#include "tessara/kyc/WhiteTouchTarget.h"

#include <QPainter>

namespace tessara {

WhiteTouchTarget::WhiteTouchTarget(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("whiteWebView"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void WhiteTouchTarget::setAlpha(double alpha) {
    alpha_ = alpha;
    update();
}

void WhiteTouchTarget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(alpha_);
    painter.setPen(QPen(Qt::white, 1));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

} // namespace tessara
