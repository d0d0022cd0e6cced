#include "tessara/ui/Glyphs.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <algorithm>

namespace tessara {

namespace {
QPen strokePen(const QColor& color, double width) {
    QPen pen(color, width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen;
}

// The largest square centred in `box`.
QRectF squareIn(const QRectF& box) {
    const double side = std::min(box.width(), box.height());
    return QRectF(box.center().x() - side / 2, box.center().y() - side / 2, side, side);
}
} // namespace

void drawGlyph(QPainter& painter, Glyph glyph, const QRectF& box, const QColor& color,
               const QColor& onColor) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF sq = squareIn(box);
    const double s = sq.width();
    const double x = sq.left();
    const double y = sq.top();
    switch (glyph) {
    case Glyph::chevronUpChevronDown: {
        const double w = s * 0.18;
        const double cx = box.center().x();
        painter.setPen(strokePen(color, std::max(1.5, s * 0.11)));
        painter.setBrush(Qt::NoBrush);
        QPainterPath up;
        up.moveTo(cx - w, y + s * 0.38);
        up.lineTo(cx, y + s * 0.24);
        up.lineTo(cx + w, y + s * 0.38);
        QPainterPath down;
        down.moveTo(cx - w, y + s * 0.62);
        down.lineTo(cx, y + s * 0.76);
        down.lineTo(cx + w, y + s * 0.62);
        painter.drawPath(up);
        painter.drawPath(down);
        break;
    }
    case Glyph::chevronRight: {
        painter.setPen(strokePen(color, std::max(1.5, s * 0.13)));
        QPainterPath path;
        path.moveTo(x + s * 0.38, y + s * 0.2);
        path.lineTo(x + s * 0.66, y + s * 0.5);
        path.lineTo(x + s * 0.38, y + s * 0.8);
        painter.drawPath(path);
        break;
    }
    case Glyph::checkmark: {
        painter.setPen(strokePen(color, std::max(1.6, s * 0.12)));
        QPainterPath tick;
        tick.moveTo(x + s * 0.18, y + s * 0.52);
        tick.lineTo(x + s * 0.4, y + s * 0.74);
        tick.lineTo(x + s * 0.82, y + s * 0.28);
        painter.drawPath(tick);
        break;
    }
    case Glyph::square:
    case Glyph::checkmarkSquareFill: {
        const double line = std::max(1.5, s * 0.08);
        const QRectF r = sq.adjusted(s * 0.08, s * 0.08, -s * 0.08, -s * 0.08);
        const double radius = s * 0.2;
        if (glyph == Glyph::square) {
            painter.setPen(strokePen(color, line));
            painter.setBrush(Qt::NoBrush);
            const double in = line / 2;
            painter.drawRoundedRect(r.adjusted(in, in, -in, -in), radius, radius);
        } else {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawRoundedRect(r, radius, radius);
            painter.setPen(strokePen(onColor, std::max(1.8, s * 0.11)));
            QPainterPath tick;
            tick.moveTo(x + s * 0.29, y + s * 0.52);
            tick.lineTo(x + s * 0.44, y + s * 0.67);
            tick.lineTo(x + s * 0.72, y + s * 0.36);
            painter.setBrush(Qt::NoBrush);
            painter.drawPath(tick);
        }
        break;
    }
    case Glyph::circle:
    case Glyph::circleInsetFilled: {
        const double line = std::max(1.5, s * 0.08);
        const QRectF r =
            sq.adjusted(s * 0.08 + line / 2, s * 0.08 + line / 2, -s * 0.08 - line / 2, -s * 0.08 - line / 2);
        painter.setPen(strokePen(color, line));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(r);
        if (glyph == Glyph::circleInsetFilled) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            const double inset = r.width() * 0.22;
            painter.drawEllipse(r.adjusted(inset, inset, -inset, -inset));
        }
        break;
    }
    case Glyph::photoOnRectangle: {
        const double line = std::max(1.2, s * 0.07);
        painter.setPen(strokePen(color, line));
        painter.setBrush(Qt::NoBrush);
        const QRectF back(x + s * 0.22, y + s * 0.12, s * 0.68, s * 0.54);
        const QRectF front(x + s * 0.08, y + s * 0.3, s * 0.68, s * 0.54);
        painter.drawRoundedRect(back, s * 0.08, s * 0.08);
        painter.setBrush(onColor); // hides the back frame behind the front one
        painter.drawRoundedRect(front, s * 0.08, s * 0.08);
        QPainterPath hills;
        hills.moveTo(front.left() + s * 0.06, front.bottom() - s * 0.06);
        hills.lineTo(front.left() + s * 0.28, front.top() + s * 0.26);
        hills.lineTo(front.left() + s * 0.42, front.top() + s * 0.38);
        hills.lineTo(front.left() + s * 0.5, front.top() + s * 0.3);
        hills.lineTo(front.right() - s * 0.06, front.bottom() - s * 0.06);
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(hills);
        painter.setBrush(color);
        painter.setPen(Qt::NoPen);
        painter.drawEllipse(QPointF(front.right() - s * 0.16, front.top() + s * 0.14), s * 0.05, s * 0.05);
        break;
    }
    case Glyph::document: {
        const double line = std::max(1.2, s * 0.07);
        painter.setPen(strokePen(color, line));
        painter.setBrush(Qt::NoBrush);
        QPainterPath page;
        page.moveTo(x + s * 0.22, y + s * 0.1);
        page.lineTo(x + s * 0.58, y + s * 0.1);
        page.lineTo(x + s * 0.78, y + s * 0.3);
        page.lineTo(x + s * 0.78, y + s * 0.9);
        page.lineTo(x + s * 0.22, y + s * 0.9);
        page.closeSubpath();
        painter.drawPath(page);
        painter.drawLine(QPointF(x + s * 0.34, y + s * 0.52), QPointF(x + s * 0.66, y + s * 0.52));
        painter.drawLine(QPointF(x + s * 0.34, y + s * 0.68), QPointF(x + s * 0.66, y + s * 0.68));
        break;
    }
    }
    painter.restore();
}

QIcon glyphIcon(Glyph glyph, QSize size, const QColor& color, const QColor& onColor) {
    QIcon icon;
    for (int ratio = 1; ratio <= 3; ++ratio) {
        QPixmap pixmap(size * ratio);
        pixmap.setDevicePixelRatio(ratio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        drawGlyph(painter, glyph, QRectF(QPointF(0, 0), QSizeF(size)), color, onColor);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tessara
