#include "host/PhoneFrame.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPainterPath>

namespace tessara::demo {

PhoneFrame::PhoneFrame(QWidget* screen, QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kBezel, kBezel, kBezel, kBezel);
    layout->addWidget(screen);
    setFixedSize(screen->width() + 2 * kBezel, screen->height() + 2 * kBezel);
}

void PhoneFrame::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QPainterPath outer;
    outer.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 28, 28);
    p.fillPath(outer, QColor(0x10, 0x14, 0x13));
}

} // namespace tessara::demo
