#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QSize>

class QPainter;

namespace tessara {

// The small symbols the controls show, drawn as vectors so they stay crisp at any DPR.
enum class Glyph {
    chevronUpChevronDown, // dropdown arrows
    chevronRight,         // consent link
    checkmark,            // chosen menu item
    square,               // checkbox, off
    checkmarkSquareFill,  // checkbox, on: filled square, white tick
    circle,               // radio, off
    circleInsetFilled,    // radio, on: ring with a filled centre
    photoOnRectangle,     // "Photo Library"
    document,             // "Other File"
};

// Draws `glyph` centred in `box`; `color` is the glyph's colour, `onColor` the colour of
// marks drawn on a filled glyph (the tick).
void drawGlyph(QPainter& painter, Glyph glyph, const QRectF& box, const QColor& color,
               const QColor& onColor = Qt::white);

// The glyph as an icon of `size` with pixmaps for 1x, 2x and 3x screens.
QIcon glyphIcon(Glyph glyph, QSize size, const QColor& color, const QColor& onColor = Qt::white);

} // namespace tessara
