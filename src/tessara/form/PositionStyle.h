#pragma once

#include <QRect>
#include <QString>
#include <vector>

namespace tessara {

// Style classes that take a control out of the form's stack and pin it over the screen.
// Every blank-separated piece that contains "position" counts; "position-top",
// "position-middle" and "position-bottom" also fix a vertical edge.
class PositionStyle {
public:
    enum class Anchor { none, top, middle, bottom };

    // Distance of a top or bottom anchored control from the screen's edge.
    static constexpr int kEdgeInset = 16;

    // The position pieces of `lowercasedStyle`, in order; empty when nothing positions.
    static std::vector<Anchor> pieces(const QString& lowercasedStyle);

    // Where a positioned control goes on a screen of `bounds`: `padding` in from both
    // sides, at its `preferredHeight`. Two different vertical anchors pin both edges, so
    // the control stretches between them, as two fixed edges would demand. With no
    // vertical anchor the control stays at the top of the screen.
    static QRect placement(const std::vector<Anchor>& anchors, const QRect& bounds, int padding,
                           int preferredHeight);
};

} // namespace tessara
