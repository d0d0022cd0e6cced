#include "tessara/appearance/TSRAppearance.h"

#include <QGuiApplication>
#include <QPalette>
#include <QVariant>
#include <QWidget>

namespace tessara {

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Text styles of a phone screen, in pixels: body 17, headline 17 semibold, callout 16.
QFont textStyle(int pixelSize, QFont::Weight weight) {
    QFont f = QGuiApplication::font();
    f.setPixelSize(pixelSize);
    f.setWeight(weight);
    return f;
}

// A lazy property: the first read stores the fallback, later reads return the stored value.
template <typename T, typename F> T lazy(std::optional<T>& slot, F&& fallback) {
    if (!slot)
        slot = fallback();
    return *slot;
}

// The platform colours each default is made of, light first, then dark. Constant-initialised,
// so a theme made during static initialisation still finds them.
constexpr QColor kWhite(255, 255, 255);
constexpr QColor kBlack(0, 0, 0);
constexpr DynamicColor kSystemBlue{QColor(0x00, 0x7a, 0xff), QColor(0x0a, 0x84, 0xff)};
constexpr DynamicColor kSystemBackground{kWhite, kBlack};
constexpr DynamicColor kLabel{kBlack, kWhite};
constexpr DynamicColor kSeparator{QColor(0x3c, 0x3c, 0x43, 0x49), QColor(0x54, 0x54, 0x58, 0x99)};
constexpr DynamicColor kPlaceholderText{QColor(0x3c, 0x3c, 0x43, 0x4c), QColor(0xeb, 0xeb, 0xf5, 0x4c)};
constexpr DynamicColor kSecondarySystemBackground{QColor(0xf2, 0xf2, 0xf7), QColor(0x1c, 0x1c, 0x1e)};
// Black or white at 20 % (51 of 255).
constexpr DynamicColor kInputBorder{QColor(0, 0, 0, 51), QColor(255, 255, 255, 51)};

// The widget property that carries a forced style down to everything inside the widget.
constexpr char kStyleProperty[] = "tessaraInterfaceStyle";

InterfaceStyle& scopedStyle() {
    thread_local InterfaceStyle style = InterfaceStyle::unspecified;
    return style;
}
} // namespace

TSRAppearance::TSRAppearance()
    : tintColor_(kSystemBlue)
    , backgroundColor_(kSystemBackground)
    , textColor_(kLabel)
    , font_(textStyle(17, QFont::Normal))
    , navigationTitleFont_(textStyle(17, QFont::DemiBold))
    , inputBorderColor_(kInputBorder)
    , inputBackgroundColor_(kSystemBackground)
    , consentLinkButtonFont_(textStyle(16, QFont::Normal)) {}

bool TSRAppearance::isDarkStyle() {
    if (scopedStyle() != InterfaceStyle::unspecified)
        return scopedStyle() == InterfaceStyle::dark;
    const QPalette p = QGuiApplication::palette();
    return p.color(QPalette::Window).lightness() < p.color(QPalette::WindowText).lightness();
}

bool TSRAppearance::isDarkStyle(const QWidget* widget) {
    const InterfaceStyle forced = interfaceStyle(widget);
    return forced == InterfaceStyle::unspecified ? isDarkStyle() : forced == InterfaceStyle::dark;
}

void TSRAppearance::setInterfaceStyle(QWidget* widget, InterfaceStyle style) {
    widget->setProperty(kStyleProperty,
                        style == InterfaceStyle::unspecified ? QVariant() : QVariant(int(style)));
}

InterfaceStyle TSRAppearance::interfaceStyle(const QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        const QVariant value = widget->property(kStyleProperty);
        if (value.isValid())
            return InterfaceStyle(value.toInt());
    }
    return InterfaceStyle::unspecified;
}

TSRAppearance::StyleScope::StyleScope(InterfaceStyle style)
    : previous_(scopedStyle()) {
    if (style != InterfaceStyle::unspecified)
        scopedStyle() = style;
}

TSRAppearance::StyleScope::~StyleScope() {
    scopedStyle() = previous_;
}

QColor TSRAppearance::systemBlue() {
    return kSystemBlue.resolved();
}

QColor TSRAppearance::separatorColor() {
    return kSeparator.resolved();
}

QColor TSRAppearance::placeholderTextColor() {
    return kPlaceholderText.resolved();
}

QColor TSRAppearance::secondarySystemBackground() {
    return kSecondarySystemBackground.resolved();
}

QFont TSRAppearance::inputFont() {
    return lazy(inputFont_, [this] { return font_; });
}

QColor TSRAppearance::inputTextColor() {
    // The stored value is textColor's pair, not its colour of the moment.
    return lazy(inputTextColor_, [this] { return textColor_; }).resolved();
}

QFont TSRAppearance::buttonFont() {
    return lazy(buttonFont_, [this] { return font_; });
}

QColor TSRAppearance::buttonTextColor() {
    return lazy(buttonTextColor_, [this] { return textColor_; }).resolved();
}

double TSRAppearance::buttonMinimumHeight() {
    return lazy(buttonMinimumHeight_, [] { return kNaN; });
}

double TSRAppearance::leadingSpace() {
    return lazy(leadingSpace_, [] { return kNaN; });
}

TSRAppearance::ButtonSize TSRAppearance::buttonSize() {
    return lazy(buttonSize_, [] { return ButtonSize::medium; });
}

TSRAppearance::ButtonCornerStyle TSRAppearance::buttonCornerStyle() {
    return lazy(buttonCornerStyle_, [] { return ButtonCornerStyle::dynamic; });
}

double TSRAppearance::buttonCornerRadius() {
    return lazy(buttonCornerRadius_, [] { return kNaN; });
}

bool TSRAppearance::embedInstructionsLabelInBubble() {
    return lazy(embedInstructionsLabelInBubble_, [] { return false; });
}

QColor TSRAppearance::bubbleBackgroundColor() {
    return lazy(bubbleBackgroundColor_, [] { return kSecondarySystemBackground; }).resolved();
}

double TSRAppearance::bubbleCornerRadius() {
    return lazy(bubbleCornerRadius_, [] { return 8.0; });
}

} // namespace tessara
