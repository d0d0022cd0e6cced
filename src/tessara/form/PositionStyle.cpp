#include "tessara/form/PositionStyle.h"

#include <QStringList>
#include <algorithm>

namespace tessara {

std::vector<PositionStyle::Anchor> PositionStyle::pieces(const QString& lowercasedStyle) {
    std::vector<Anchor> result;
    const auto parts = lowercasedStyle.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString& piece : parts) {
        if (!piece.contains(QLatin1String("position")))
            continue;
        if (piece == QLatin1String("position-top"))
            result.push_back(Anchor::top);
        else if (piece == QLatin1String("position-middle"))
            result.push_back(Anchor::middle);
        else if (piece == QLatin1String("position-bottom"))
            result.push_back(Anchor::bottom);
        else
            result.push_back(Anchor::none);
    }
    return result;
}

QRect PositionStyle::placement(const std::vector<Anchor>& anchors, const QRect& bounds, int padding,
                               int preferredHeight) {
    const bool top = std::ranges::find(anchors, Anchor::top) != anchors.end();
    const bool middle = std::ranges::find(anchors, Anchor::middle) != anchors.end();
    const bool bottom = std::ranges::find(anchors, Anchor::bottom) != anchors.end();
    const int x = bounds.left() + padding;
    const int width = std::max(0, bounds.width() - 2 * padding);
    const int distinct = int(top) + int(middle) + int(bottom);

    int y = bounds.top();
    int height = preferredHeight;
    if (distinct >= 2) {
        // Any two of top, centre and bottom edge fix both edges at the insets.
        y = bounds.top() + kEdgeInset;
        height = std::max(0, bounds.height() - 2 * kEdgeInset);
    } else if (top) {
        y = bounds.top() + kEdgeInset;
    } else if (middle) {
        y = bounds.top() + (bounds.height() - height) / 2;
    } else if (bottom) {
        y = bounds.bottom() + 1 - kEdgeInset - height;
    }
    return QRect(x, y, width, height);
}

} // namespace tessara
