#pragma once

#include <QColor>

namespace tessara {

// A colour with one value for the light and one for the dark style of the application
// palette, resolved each time it is read. Theme defaults are such pairs, so a default keeps
// following a palette switch even after a lazy property stored it; a colour the host sets
// is the same in both styles.
class DynamicColor {
public:
    constexpr DynamicColor(const QColor& light, const QColor& dark)
        : light_(light)
        , dark_(dark) {}
    static DynamicColor fixed(const QColor& colour) { return {colour, colour}; }

    // The value for the palette at the moment of the call.
    QColor resolved() const;

    bool operator==(const DynamicColor&) const = default;

private:
    QColor light_;
    QColor dark_;
};

} // namespace tessara
