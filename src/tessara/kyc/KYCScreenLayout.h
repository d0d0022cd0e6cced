#pragma once

#include <QRect>
#include <QSize>
#include <functional>

namespace tessara {

// Where the verification screen's pieces go for a screen of a given size: the 4:3 picture area at
// the top (full width), the guidance text 32 below it (on its bubble when there is one), the
// progress bar 8 above the text, and the continue button 16 above the bottom.
class KYCScreenLayout {
public:
    struct Input {
        QSize screen;
        double leadingSpace = 0.0; // NaN when the theme leaves it unset
        bool bubble = false;
        double bubbleCornerRadius = 8.0;
        int labelNaturalWidth = 0;                 // the text on one line
        std::function<int(int width)> labelHeight; // the wrapped text's height at `width`
        int buttonHeight = 44;
        double buttonMinimumHeight = 0.0; // NaN when unset
    };

    struct Frames {
        QRect backing; // also the preview and the overlays
        QRect label;
        QRect bubble; // empty without one
        QRect progress;
        QRect button;
    };

    static Frames compute(const Input& input);
    // The widest the guidance text may be before it has to shrink or wrap.
    static int labelMaxWidth(const Input& input);
};

} // namespace tessara
