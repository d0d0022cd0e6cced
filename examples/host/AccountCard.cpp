#include "host/AccountCard.h"

#include "host/BrandPalette.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

namespace tessara::demo {

AccountCard::AccountCard(QWidget* parent)
    : QWidget(parent) {
    setObjectName(QStringLiteral("accountCard"));
    setMinimumHeight(sizeHint().height());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void AccountCard::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath shape;
    shape.addRoundedRect(card, 18, 18);

    QLinearGradient fill(card.topLeft(), card.bottomRight());
    fill.setColorAt(0, BrandPalette::primary());
    fill.setColorAt(1, BrandPalette::primaryDark());
    p.fillPath(shape, fill);

    // Two soft circles give the card some depth without any image asset.
    p.setClipPath(shape);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 255, 255, 18));
    p.drawEllipse(QPointF(card.right() - 30, card.top() + 10), 110, 110);
    p.setBrush(QColor(255, 255, 255, 12));
    p.drawEllipse(QPointF(card.right() - 120, card.bottom() + 40), 90, 90);
    p.setClipping(false);

    const qreal pad = 20;
    p.setPen(QColor(255, 255, 255, 200));
    p.setFont(BrandPalette::font(9.5));
    p.drawText(QRectF(pad, pad, card.width() - 2 * pad, 18), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Разплащателна сметка"));
    p.setFont(BrandPalette::font(9.5, QFont::DemiBold));
    p.drawText(QRectF(pad, pad, card.width() - 2 * pad, 18), Qt::AlignRight | Qt::AlignVCenter,
               QStringLiteral("BGN"));

    p.setPen(Qt::white);
    p.setFont(BrandPalette::font(22, QFont::Bold));
    p.drawText(QRectF(pad, 52, card.width() - 2 * pad, 36), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("4 812,36 лв."));
    p.setPen(QColor(255, 255, 255, 190));
    p.setFont(BrandPalette::font(9));
    p.drawText(QRectF(pad, 88, card.width() - 2 * pad, 18), Qt::AlignLeft | Qt::AlignVCenter,
               QStringLiteral("Налична сума"));

    p.setPen(QColor(255, 255, 255, 225));
    p.setFont(BrandPalette::font(10.5, QFont::Medium));
    p.drawText(QRectF(pad, card.height() - pad - 20, card.width() - 2 * pad, 20),
               Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("BG•• VEDR •••• •••• 4821"));
    // A small amber chip marks the card as the bank's own.
    p.setBrush(BrandPalette::accent());
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(card.width() - pad - 34, card.height() - pad - 22, 34, 24), 5, 5);
}

} // namespace tessara::demo
