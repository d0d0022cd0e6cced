#include "tessara/kyc/KYCScreenLayout.h"

#include <algorithm>
#include <cmath>

namespace tessara {

namespace {
int insetOf(const KYCScreenLayout::Input& in) {
    return int(std::lround(std::isnan(in.leadingSpace) ? 16.0 : in.leadingSpace));
}
} // namespace

int KYCScreenLayout::labelMaxWidth(const Input& in) {
    const int inset = insetOf(in);
    const int room = std::max(0, in.screen.width() - 2 * inset);
    // On a bubble the label keeps the same space again from the bubble's edges.
    return in.bubble ? std::max(0, room - 2 * inset) : room;
}

KYCScreenLayout::Frames KYCScreenLayout::compute(const Input& in) {
    Frames f;
    const int width = in.screen.width();
    const int inset = insetOf(in);
    const int labelWidth = std::clamp(in.labelNaturalWidth, 0, labelMaxWidth(in));

    f.backing = QRect(0, 0, width, int(std::lround(width * 0.75)));
    const int textTop = f.backing.bottom() + 1 + 32;

    if (in.bubble) {
        f.bubble = QRect(inset, textTop, std::max(0, width - 2 * inset), 0);
        const int labelHeight = in.labelHeight ? in.labelHeight(labelWidth) : 0;
        f.bubble.setHeight(labelHeight + 32);
        f.label = QRect(f.bubble.x() + (f.bubble.width() - labelWidth) / 2, f.bubble.y() + 16, labelWidth,
                        labelHeight);
    } else {
        f.label = QRect((width - labelWidth) / 2, textTop, labelWidth,
                        in.labelHeight ? in.labelHeight(labelWidth) : 0);
    }

    // A radius below zero means half the bubble's height.
    const QRect& text = in.bubble ? f.bubble : f.label;
    const double radius = in.bubbleCornerRadius < 0 ? text.height() / 2.0 : in.bubbleCornerRadius;
    const double progressSpace = std::isnan(in.leadingSpace) ? 24.0 : in.leadingSpace;
    const int progressInset = int(std::lround(progressSpace + radius * 0.5 - 2));
    const int progressWidth = std::max(0, width - 2 * progressInset);
    f.progress = QRect(text.center().x() + 1 - progressWidth / 2, text.y() - 8 - 8, progressWidth, 8);

    int buttonHeight = in.buttonHeight;
    if (!std::isnan(in.buttonMinimumHeight))
        buttonHeight = std::max(buttonHeight, int(std::ceil(in.buttonMinimumHeight)));
    f.button =
        QRect(inset, in.screen.height() - 16 - buttonHeight, std::max(0, width - 2 * inset), buttonHeight);
    return f;
}

} // namespace tessara
