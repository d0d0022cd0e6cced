#include "tessara/form/controls/TSRRadioButton.h"

#include "tessara/ui/Glyphs.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kCircleSize = 24;
constexpr int kSpacing = 12; // between the circle and the title
constexpr int kMinimumHeight = 44;
constexpr int kVerticalPadding = 10;
} // namespace

TSRRadioButton::TSRRadioButton(QWidget* parent)
    : QAbstractButton(parent) {
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
}

void TSRRadioButton::setFieldOption(const FieldOption& option) {
    fieldOption = option;
    setText(option.label.value_or(option.value));
    updateGeometry();
}

QRect TSRRadioButton::titleRect(int width) const {
    const int left = kCircleSize + kSpacing;
    const QFontMetrics fm(font());
    const int textWidth = std::max(1, width - left);
    const QRect bounds = fm.boundingRect(QRect(0, 0, textWidth, 100000), Qt::TextWordWrap, text());
    const int h = std::max(bounds.height(), fm.height());
    return QRect(left, (height() - h) / 2, textWidth, h);
}

int TSRRadioButton::heightForWidth(int width) const {
    const QFontMetrics fm(font());
    const int textWidth = std::max(1, width - kCircleSize - kSpacing);
    const QRect bounds = fm.boundingRect(QRect(0, 0, textWidth, 100000), Qt::TextWordWrap, text());
    return std::max(kMinimumHeight, std::max(bounds.height(), fm.height()) + 2 * kVerticalPadding);
}

QSize TSRRadioButton::sizeHint() const {
    const int w = kCircleSize + kSpacing + QFontMetrics(font()).horizontalAdvance(text()) + 2;
    return {w, heightForWidth(w)};
}

QSize TSRRadioButton::minimumSizeHint() const {
    return {kCircleSize + kSpacing + QFontMetrics(font()).averageCharWidth() * 6, kMinimumHeight};
}

bool TSRRadioButton::hitButton(const QPoint& pos) const {
    return rect().contains(pos);
}

void TSRRadioButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect title = titleRect(width());
    const QFontMetrics fm(font());
    const double centreY =
        title.height() <= fm.height() + 1 ? height() / 2.0 : title.top() + fm.height() / 2.0;
    const QRectF circle(0, centreY - kCircleSize / 2.0, kCircleSize, kCircleSize);
    QColor tint = palette().color(QPalette::Highlight);
    if (isDown())
        tint = tint.darker(130);
    if (!isEnabled())
        tint.setAlphaF(0.4f);
    // An unselected circle is drawn in the tint, lighter, so the chosen one stands out.
    QColor ring = tint;
    if (!isChecked())
        ring.setAlphaF(ring.alphaF() * 0.55f);
    drawGlyph(painter, isChecked() ? Glyph::circleInsetFilled : Glyph::circle, circle,
              isChecked() ? tint : ring);
    if (hasFocus()) {
        QColor halo = palette().color(QPalette::Highlight);
        halo.setAlphaF(0.35f);
        painter.setPen(QPen(halo, 3.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(circle.adjusted(-1, -1, 1, 1));
    }
    QColor textColor = palette().color(QPalette::WindowText);
    if (!isEnabled())
        textColor.setAlphaF(0.4f);
    painter.setPen(textColor);
    painter.setFont(font());
    painter.drawText(title, Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, text());
}

} // namespace tessara
