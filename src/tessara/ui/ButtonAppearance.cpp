#include "tessara/ui/ButtonAppearance.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/CssColor.h"

#include <QEvent>
#include <QPushButton>
#include <algorithm>
#include <cmath>

namespace tessara {

namespace {
// WCAG relative luminance and contrast, to tell whether the title reads on a solid tint.
double luminance(const QColor& c) {
    auto channel = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

double contrast(const QColor& a, const QColor& b) {
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor withAlpha(QColor c, double alpha) {
    c.setAlphaF(float(c.alphaF() * alpha));
    return c;
}

int paddingFor(TSRAppearance::ButtonSize size) {
    switch (size) {
    case TSRAppearance::ButtonSize::mini:
        return 8;
    case TSRAppearance::ButtonSize::small:
        return 12;
    case TSRAppearance::ButtonSize::medium:
        return 16;
    case TSRAppearance::ButtonSize::large:
        return 20;
    }
    return 16;
}
} // namespace

ButtonAppearance::ButtonAppearance(QPushButton* button)
    : QObject(button)
    , button_(button) {
    setObjectName(QStringLiteral("ButtonAppearance"));
    button->installEventFilter(this);
}

ButtonAppearance* ButtonAppearance::apply(QPushButton* button) {
    auto* appearance = button->findChild<ButtonAppearance*>(QString(), Qt::FindDirectChildrenOnly);
    if (!appearance)
        appearance = new ButtonAppearance(button); // owned by `button`
    appearance->readTheme();
    appearance->applyStyleSheet();
    return appearance;
}

int ButtonAppearance::heightFor(TSRAppearance::ButtonSize size) {
    switch (size) {
    case TSRAppearance::ButtonSize::mini:
        return 28;
    case TSRAppearance::ButtonSize::small:
        return 34;
    case TSRAppearance::ButtonSize::medium:
        return 46;
    case TSRAppearance::ButtonSize::large:
        return 52;
    }
    return 46;
}

double ButtonAppearance::cornerRadiusFor(TSRAppearance::ButtonCornerStyle style, double buttonCornerRadius,
                                         TSRAppearance::ButtonSize size, double height) {
    const double half = height / 2.0;
    if (TSRAppearance::isSet(buttonCornerRadius))
        return std::clamp(buttonCornerRadius, 0.0, half);
    switch (style) {
    case TSRAppearance::ButtonCornerStyle::capsule:
        return half;
    case TSRAppearance::ButtonCornerStyle::small:
        return std::min(6.0, half);
    case TSRAppearance::ButtonCornerStyle::medium:
        return std::min(8.0, half);
    case TSRAppearance::ButtonCornerStyle::large:
        return std::min(12.0, half);
    case TSRAppearance::ButtonCornerStyle::dynamic:
    case TSRAppearance::ButtonCornerStyle::fixed:
        // `fixed` without a radius of its own keeps the size's usual radius.
        break;
    }
    switch (size) {
    case TSRAppearance::ButtonSize::mini:
        return std::min(6.0, half);
    case TSRAppearance::ButtonSize::small:
        return std::min(8.0, half);
    case TSRAppearance::ButtonSize::medium:
        return std::min(12.0, half);
    case TSRAppearance::ButtonSize::large:
        return std::min(14.0, half);
    }
    return std::min(12.0, half);
}

void ButtonAppearance::readTheme() {
    TSRAppearance& theme = currentAppearance();
    size_ = theme.buttonSize();
    cornerStyle_ = theme.buttonCornerStyle();
    cornerRadius_ = theme.buttonCornerRadius();
    tint_ = theme.tintColor();
    textColor_ = theme.buttonTextColor();
    button_->setFont(theme.buttonFont());
    int minimum = heightFor(size_);
    const double themeMinimum = theme.buttonMinimumHeight();
    if (TSRAppearance::isSet(themeMinimum))
        minimum = std::max(minimum, int(std::ceil(themeMinimum)));
    button_->setMinimumHeight(minimum);
}

void ButtonAppearance::applyStyleSheet() {
    const double height = std::max(button_->height(), button_->minimumHeight());
    const double radius = cornerRadiusFor(cornerStyle_, cornerRadius_, size_, height);
    // A light title that reads on the tint gets a solid button; a dark one (the default black
    // title) gets a light wash of the tint behind it.
    const bool solid = luminance(textColor_) > luminance(tint_) && contrast(textColor_, tint_) >= 3.0;
    const QColor normal = solid ? tint_ : withAlpha(tint_, 0.16);
    const QColor hover = solid ? tint_.lighter(110) : withAlpha(tint_, 0.22);
    const QColor pressed = solid ? tint_.darker(120) : withAlpha(tint_, 0.30);
    const QColor disabledBackground = withAlpha(normal, 0.5);
    const QColor disabledText = withAlpha(textColor_, 0.45);
    const int padding = paddingFor(size_);
    const QString sheet =
        QStringLiteral("QPushButton{background-color:%1;color:%2;border:2px solid transparent;"
                       "border-radius:%3px;padding:4px %4px;}"
                       "QPushButton:hover{background-color:%5;}"
                       "QPushButton:pressed{background-color:%6;}"
                       "QPushButton:focus{border-color:%7;}"
                       "QPushButton:disabled{background-color:%8;color:%9;}")
            .arg(cssColor(normal), cssColor(textColor_))
            .arg(radius, 0, 'f', 1)
            .arg(padding)
            .arg(cssColor(hover), cssColor(pressed),
                 cssColor(solid ? tint_.darker(140) : withAlpha(tint_, 0.8)), cssColor(disabledBackground),
                 cssColor(disabledText));
    // Setting an equal sheet again would only restyle for nothing (and resize loops).
    if (button_->styleSheet() != sheet)
        button_->setStyleSheet(sheet);
}

bool ButtonAppearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == button_ && event->type() == QEvent::Resize) {
        // Capsules and radii clamped to half the height follow the laid-out height.
        applyStyleSheet();
    }
    return false;
}

} // namespace tessara
