#include "tessara/kyc/InstructionsBubble.h"

#include <QPainter>

namespace tessara {

InstructionsBubble::InstructionsBubble(const QColor& color, double cornerRadius, QWidget* parent)
    : QWidget(parent)
    , color_(color)
    , cornerRadius_(cornerRadius) {
    setObjectName(QStringLiteral("bubbleInstructionsView"));
}

double InstructionsBubble::cornerRadius() const {
    return cornerRadius_ < 0 ? height() / 2.0 : cornerRadius_;
}

void InstructionsBubble::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color_);
    const double radius = std::min(cornerRadius(), height() / 2.0);
    painter.drawRoundedRect(QRectF(rect()), radius, radius);
}

} // namespace tessara
