#include "tessara/form/controls/TSRCheckbox.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/Glyphs.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace tessara {

namespace {
constexpr int kBoxSize = 24;
constexpr int kImagePadding = 10; // between the box and the title
constexpr int kMinimumHeight = 44;
constexpr int kVerticalPadding = 10;
} // namespace

TSRCheckbox::TSRCheckbox(QWidget* parent)
    : QAbstractButton(parent) {
    setCheckable(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void TSRCheckbox::setup() {
    applyAccessibilityIdentifier();
    TSRAppearance& theme = currentAppearance();
    setText(field->label.value_or(QStringLiteral("MISSING_BUTTON_TITLE")));
    setFont(theme.buttonFont());
    QPalette p = palette();
    p.setColor(QPalette::ButtonText, theme.buttonTextColor());
    p.setColor(QPalette::Highlight, theme.tintColor());
    setPalette(p);
    // `toggled` covers every change of state (a click, setChecked, toggle, animateClick, a
    // key press) exactly once, where `clicked` would miss the ones made in code.
    connect(this, &QAbstractButton::toggled, this, &TSRCheckbox::recordSelection);
}

void TSRCheckbox::setSelected(bool selected) {
    // An unchanged state emits no `toggled`, yet setting the selection still counts.
    if (isChecked() == selected)
        recordSelection(selected);
    else
        setChecked(selected);
}

void TSRCheckbox::recordSelection(bool selected) {
    value = selected ? QStringLiteral("true") : QStringLiteral("false");
    announceValue();
}

bool TSRCheckbox::hasValue() const {
    return value.has_value();
}

std::optional<ControlValidationError> TSRCheckbox::validate(bool) {
    // A required checkbox asks only that the user made a choice, ticked or not.
    if (value && !value->isEmpty())
        return std::nullopt;
    return ControlValidationError{ControlValidationError::Kind::fieldValueInvalid, this};
}

QRectF TSRCheckbox::boxRect() const {
    const QRect title = titleRect(width());
    const QFontMetrics fm(font());
    // The box sits on the first line of the title, or in the middle when there is one line.
    const double centreY =
        title.height() <= fm.height() + 1 ? height() / 2.0 : title.top() + fm.height() / 2.0;
    return QRectF(0, centreY - kBoxSize / 2.0, kBoxSize, kBoxSize);
}

QRect TSRCheckbox::titleRect(int width) const {
    const int left = kBoxSize + kImagePadding;
    const QFontMetrics fm(font());
    const int textWidth = std::max(1, width - left);
    const QRect bounds = fm.boundingRect(QRect(0, 0, textWidth, 100000), Qt::TextWordWrap, text());
    const int h = std::max(bounds.height(), fm.height());
    const int total = std::max(kMinimumHeight, h + 2 * kVerticalPadding);
    return QRect(left, (std::max(total, height()) - h) / 2, textWidth, h);
}

int TSRCheckbox::heightForWidth(int width) const {
    const QFontMetrics fm(font());
    const int textWidth = std::max(1, width - kBoxSize - kImagePadding);
    const QRect bounds = fm.boundingRect(QRect(0, 0, textWidth, 100000), Qt::TextWordWrap, text());
    return std::max(kMinimumHeight, std::max(bounds.height(), fm.height()) + 2 * kVerticalPadding);
}

int TSRCheckbox::firstBaseline() const {
    return titleRect(width()).top() + QFontMetrics(font()).ascent();
}

int TSRCheckbox::titleIndent() {
    return kBoxSize + kImagePadding;
}

QSize TSRCheckbox::sizeHint() const {
    const QFontMetrics fm(font());
    const int w = kBoxSize + kImagePadding + fm.horizontalAdvance(text()) + 2;
    return {w, heightForWidth(w)};
}

QSize TSRCheckbox::minimumSizeHint() const {
    return {kBoxSize + kImagePadding + QFontMetrics(font()).averageCharWidth() * 6, kMinimumHeight};
}

bool TSRCheckbox::hitButton(const QPoint& pos) const {
    return rect().contains(pos);
}

void TSRCheckbox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor tint = palette().color(QPalette::Highlight);
    QColor glyphColor = tint;
    if (isDown())
        glyphColor = tint.darker(130);
    if (!isEnabled())
        glyphColor.setAlphaF(0.4f);
    const QRectF box = boxRect();
    drawGlyph(painter, isChecked() ? Glyph::checkmarkSquareFill : Glyph::square, box, glyphColor, Qt::white);
    if (hasFocus()) {
        QColor ring = tint;
        ring.setAlphaF(0.35f);
        painter.setPen(QPen(ring, 3.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(box.adjusted(-1, -1, 1, 1), 7, 7);
    }
    QColor textColor = palette().color(QPalette::ButtonText);
    if (!isEnabled())
        textColor.setAlphaF(0.4f);
    painter.setPen(textColor);
    painter.setFont(font());
    painter.drawText(titleRect(width()), Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop, text());
}

} // namespace tessara
