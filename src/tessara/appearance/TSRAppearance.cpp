#include "tessara/appearance/TSRAppearance.h"

#include <QGuiApplication>
#include <QPalette>

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
} // namespace

TSRAppearance::TSRAppearance()
    : font_(textStyle(17, QFont::Normal))
    , navigationTitleFont_(textStyle(17, QFont::DemiBold))
    , consentLinkButtonFont_(textStyle(16, QFont::Normal)) {}

bool TSRAppearance::isDarkStyle() {
    const QPalette p = QGuiApplication::palette();
    return p.color(QPalette::Window).lightness() < p.color(QPalette::WindowText).lightness();
}

QColor TSRAppearance::systemBlue() {
    return isDarkStyle() ? QColor(0x0a, 0x84, 0xff) : QColor(0x00, 0x7a, 0xff);
}

QColor TSRAppearance::separatorColor() {
    return isDarkStyle() ? QColor(0x54, 0x54, 0x58, 0x99) : QColor(0x3c, 0x3c, 0x43, 0x49);
}

QColor TSRAppearance::placeholderTextColor() {
    return isDarkStyle() ? QColor(0xeb, 0xeb, 0xf5, 0x4c) : QColor(0x3c, 0x3c, 0x43, 0x4c);
}

QColor TSRAppearance::secondarySystemBackground() {
    return isDarkStyle() ? QColor(0x1c, 0x1c, 0x1e) : QColor(0xf2, 0xf2, 0xf7);
}

QColor TSRAppearance::tintColor() const {
    return tintColor_.value_or(systemBlue());
}

QColor TSRAppearance::backgroundColor() const {
    return backgroundColor_.value_or(isDarkStyle() ? QColor(Qt::black) : QColor(Qt::white));
}

QColor TSRAppearance::textColor() const {
    return textColor_.value_or(isDarkStyle() ? QColor(Qt::white) : QColor(Qt::black));
}

QColor TSRAppearance::inputBorderColor() const {
    if (inputBorderColor_)
        return *inputBorderColor_;
    return isDarkStyle() ? QColor::fromRgbF(1.0f, 1.0f, 1.0f, 0.2f) : QColor::fromRgbF(0.0f, 0.0f, 0.0f, 0.2f);
}

QColor TSRAppearance::inputBackgroundColor() const {
    return inputBackgroundColor_.value_or(isDarkStyle() ? QColor(Qt::black) : QColor(Qt::white));
}

QFont TSRAppearance::inputFont() {
    return lazy(inputFont_, [this] { return font_; });
}

QColor TSRAppearance::inputTextColor() {
    return lazy(inputTextColor_, [this] { return textColor(); });
}

QFont TSRAppearance::buttonFont() {
    return lazy(buttonFont_, [this] { return font_; });
}

QColor TSRAppearance::buttonTextColor() {
    return lazy(buttonTextColor_, [this] { return textColor(); });
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
    return lazy(bubbleBackgroundColor_, [] { return secondarySystemBackground(); });
}

double TSRAppearance::bubbleCornerRadius() {
    return lazy(bubbleCornerRadius_, [] { return 8.0; });
}

} // namespace tessara
