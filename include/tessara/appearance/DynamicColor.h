#pragma once

#include <QColor>

namespace tessara {

/// A light or dark look forced on part of the interface; `unspecified` follows the application.
enum class InterfaceStyle { unspecified, light, dark };

/// A colour with one value for the light and one for the dark style of the application
/// palette, resolved each time it is read. Theme defaults are such pairs, so a default keeps
/// following a palette switch even after a lazy property stored it; a colour the host sets
/// is the same in both styles.
class DynamicColor {
public:
    /// A pair: `light` in the light style, `dark` in the dark one.
    constexpr DynamicColor(const QColor& light, const QColor& dark)
        : light_(light)
        , dark_(dark) {}
    /// The same colour in both styles.
    static DynamicColor fixed(const QColor& colour) { return {colour, colour}; }

    /// The value for the style in effect at the moment of the call (TSRAppearance::isDarkStyle).
    QColor resolved() const;
    /// The value for the dark (true) or light style.
    QColor resolved(bool dark) const { return dark ? dark_ : light_; }

    /// Both values equal.
    bool operator==(const DynamicColor&) const = default;

private:
    QColor light_;
    QColor dark_;
};

} // namespace tessara
