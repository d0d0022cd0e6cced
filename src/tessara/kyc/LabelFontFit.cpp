#include "tessara/kyc/LabelFontFit.h"

#include <QFontMetrics>
#include <cmath>

namespace tessara {

namespace {
// Point sizes step by half a point: finer steps change no glyph on a phone screen.
constexpr double kPointStep = 0.5;
} // namespace

int LabelFontFit::lineWidth(const QFont& font, const QString& text) {
    // A label adds a pixel of slack on each side of its text.
    return QFontMetrics(font).horizontalAdvance(text) + 2;
}

QFont LabelFontFit::fit(const QFont& base, const QString& text, int maxWidth, double minimumScale) {
    if (text.isEmpty() || lineWidth(base, text) <= maxWidth)
        return base;
    QFont font = base;
    if (base.pixelSize() > 0) {
        const int smallest = int(std::ceil(base.pixelSize() * minimumScale));
        for (int size = base.pixelSize() - 1; size >= smallest; --size) {
            font.setPixelSize(size);
            if (lineWidth(font, text) <= maxWidth)
                return font;
        }
        font.setPixelSize(smallest);
        return font;
    }
    const double smallest = base.pointSizeF() * minimumScale;
    for (double size = base.pointSizeF() - kPointStep; size > smallest; size -= kPointStep) {
        font.setPointSizeF(size);
        if (lineWidth(font, text) <= maxWidth)
            return font;
    }
    font.setPointSizeF(smallest);
    return font;
}

} // namespace tessara
