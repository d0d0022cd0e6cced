#pragma once

#include <QFont>
#include <QString>

namespace tessara {

// How the guidance text fits its width: it first shrinks, down to a fraction of its font's size,
// to stay on one line; only text still too wide at the smallest size wraps, at that size.
class LabelFontFit {
public:
    static constexpr double kMinimumScale = 0.75;

    // The font `text` takes in `maxWidth`: `base`, or the largest smaller size down to
    // `minimumScale` of it (rounded up to whole pixels for a pixel-sized font) on which it fits
    // on one line, or the smallest size when none does.
    static QFont fit(const QFont& base, const QString& text, int maxWidth,
                     double minimumScale = kMinimumScale);
    // The width `text` takes on one line in a label with `font`.
    static int lineWidth(const QFont& font, const QString& text);
};

} // namespace tessara
