#include "tessara/ui/InputDecoration.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/Hairline.h"

#include <QEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <algorithm>

namespace tessara {

namespace {
constexpr double kPlatformRadius = 10.0;
constexpr double kFocusWidth = 1.5;
// Half the height of a one-line input: a text area's corners never round more than a
// field's, or the text would run into them.
constexpr double kAreaRadiusLimit = 23.0;

QColor platformBackground() {
    return TSRAppearance::isDarkStyle() ? QColor(0x1c, 0x1c, 0x1e) : QColor(Qt::white);
}
} // namespace

InputDecoration::InputDecoration(QWidget* input)
    : QObject(input)
    , input_(input) {
    setObjectName(QStringLiteral("InputDecoration"));
    // The input draws no frame or background of its own: this object paints them behind
    // the text, so every border style looks the same across platforms and DPRs.
    QPalette palette = input->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    input->setPalette(palette);
    if (auto* line = qobject_cast<QLineEdit*>(input)) {
        line->setFrame(false);
    } else if (auto* area = qobject_cast<QPlainTextEdit*>(input)) {
        isTextArea_ = true;
        area->setFrameShape(QFrame::NoFrame);
        area->viewport()->setAutoFillBackground(false);
    }
    input->setAttribute(Qt::WA_Hover);
    input->installEventFilter(this);
}

InputDecoration* InputDecoration::of(const QWidget* input) {
    return input ? input->findChild<InputDecoration*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

void InputDecoration::applyTextStyle(QWidget* input) {
    TSRAppearance& theme = currentAppearance();
    input->setFont(theme.inputFont());
    QPalette p = input->palette();
    p.setColor(QPalette::Text, theme.inputTextColor());
    p.setColor(QPalette::PlaceholderText, TSRAppearance::placeholderTextColor());
    p.setColor(QPalette::Highlight, theme.tintColor());
    input->setPalette(p);
}

InputDecoration* InputDecoration::apply(QWidget* input) {
    InputDecoration* decoration = of(input);
    if (!decoration)
        decoration = new InputDecoration(input); // owned by `input`
    decoration->readTheme();
    input->update();
    return decoration;
}

void InputDecoration::readTheme() {
    TSRAppearance& theme = currentAppearance();
    borderStyle_ = theme.inputBorderStyle();
    focusColor_ = theme.tintColor();
    switch (borderStyle_) {
    case TSRAppearance::InputBorderStyle::none:
        themeRadius_ = theme.inputCornerRadius();
        borderColor_ = theme.inputBorderColor();
        borderWidth_ = theme.inputBorderWidth();
        backgroundColor_ = theme.inputBackgroundColor();
        return;
    case TSRAppearance::InputBorderStyle::line:
        themeRadius_ = 0.0;
        borderColor_ = TSRAppearance::isDarkStyle() ? QColor(0x98, 0x98, 0x9f) : QColor(0x6e, 0x6e, 0x73);
        borderWidth_ = 1.0;
        backgroundColor_ = Qt::transparent;
        break;
    case TSRAppearance::InputBorderStyle::bezel:
        themeRadius_ = 0.0;
        borderColor_ = TSRAppearance::isDarkStyle() ? QColor(0x63, 0x63, 0x66) : QColor(0xae, 0xae, 0xb2);
        borderWidth_ = 1.0;
        backgroundColor_ = platformBackground();
        break;
    case TSRAppearance::InputBorderStyle::roundedRect:
        themeRadius_ = kPlatformRadius;
        borderColor_ = theme.inputBorderColor();
        borderWidth_ = 1.0;
        backgroundColor_ = platformBackground();
        break;
    }
    // A text area has no border style of its own: it takes the input colour at hairline width.
    if (isTextArea_) {
        themeRadius_ = kPlatformRadius;
        borderColor_ = theme.inputBorderColor();
        borderWidth_ = hairlineWidth(input_);
        backgroundColor_ = platformBackground();
    }
}

double InputDecoration::cornerRadius() const {
    const double half = input_->height() / 2.0;
    double radius = themeRadius_ == 0.0 && borderStyle_ == TSRAppearance::InputBorderStyle::none
                        ? half
                        : std::min(themeRadius_, half);
    if (isTextArea_)
        radius = std::min(radius, kAreaRadiusLimit);
    return radius;
}

bool InputDecoration::eventFilter(QObject* watched, QEvent* event) {
    if (watched != input_)
        return false;
    switch (event->type()) {
    case QEvent::Paint:
        paint();
        break; // the input paints its text on top
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::EnabledChange:
        input_->update();
        break;
    case QEvent::PaletteChange:
    case QEvent::ApplicationPaletteChange:
    case QEvent::StyleChange:
        // A switch between light and dark changes the default border colour.
        readTheme();
        input_->update();
        break;
    default:
        break;
    }
    return false;
}

void InputDecoration::paint() {
    QPainter painter(input_);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool focused = input_->hasFocus() && input_->isEnabled();
    const double width = focused ? std::max(borderWidth_, kFocusWidth) : borderWidth_;
    const QColor color = focused ? focusColor_ : borderColor_;
    const double inset = width / 2.0;
    const QRectF rect = QRectF(input_->rect()).adjusted(inset, inset, -inset, -inset);
    const double radius = std::max(0.0, cornerRadius() - inset);

    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    QColor fill = backgroundColor_;
    if (!input_->isEnabled())
        fill.setAlphaF(fill.alphaF() * 0.5f);
    painter.fillPath(path, fill);
    if (width > 0.0 && color.alpha() > 0) {
        painter.setPen(QPen(color, width));
        painter.drawPath(path);
    }
    if (borderStyle_ == TSRAppearance::InputBorderStyle::bezel && !focused) {
        // The inset shadow along the top edge.
        painter.setPen(QPen(borderColor_.darker(130), 1.0));
        painter.drawLine(QPointF(rect.left() + 1, rect.top() + 1), QPointF(rect.right() - 1, rect.top() + 1));
    }
}

} // namespace tessara
