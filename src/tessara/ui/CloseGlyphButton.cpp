#include "tessara/ui/CloseGlyphButton.h"

#include "tessara/appearance/TSRAppearance.h"

#include <QPainter>
#include <QPainterPath>

namespace tessara {

namespace {
constexpr int kDiameter = 30;
} // namespace

CloseGlyphButton::CloseGlyphButton(QWidget* parent)
    : QAbstractButton(parent) {
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(QStringLiteral("Затвори"));
    setToolTip(QStringLiteral("Затвори"));
    setFixedSize(sizeHint());
}

QSize CloseGlyphButton::sizeHint() const {
    return {kDiameter, kDiameter};
}

void CloseGlyphButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool dark = TSRAppearance::isDarkStyle(this);
    QColor disc = dark ? QColor(255, 255, 255, 40) : QColor(118, 118, 128, 30);
    if (isDown() || hovered_)
        disc.setAlpha(disc.alpha() * 2);
    p.setPen(Qt::NoPen);
    p.setBrush(disc);
    const QRectF circle = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    p.drawEllipse(circle);

    QColor cross = dark ? QColor(235, 235, 245, 153) : QColor(60, 60, 67, 153);
    if (!isEnabled())
        cross.setAlpha(60);
    QPen pen(cross, 2.2, Qt::SolidLine, Qt::RoundCap);
    p.setPen(pen);
    const QPointF c = circle.center();
    const double arm = kDiameter * 0.16;
    p.drawLine(c + QPointF(-arm, -arm), c + QPointF(arm, arm));
    p.drawLine(c + QPointF(arm, -arm), c + QPointF(-arm, arm));
}

void CloseGlyphButton::enterEvent(QEnterEvent* event) {
    hovered_ = true;
    update();
    QAbstractButton::enterEvent(event);
}

void CloseGlyphButton::leaveEvent(QEvent* event) {
    hovered_ = false;
    update();
    QAbstractButton::leaveEvent(event);
}

} // namespace tessara
