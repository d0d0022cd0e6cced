#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

#include <QString>
#include <optional>

namespace tessara {

// "rects": a rectangle to draw over the preview. x and y are fractions of the preview, w and h
// screen points. They arrive as texts; a text that is no number reads as 0.0.
struct OverlayRectangle {
    WSCommand cmd = WSCommand::overlayRectangle;
    double x = 0;
    double y = 0;
    double w = 0;
    double h = 0;
    // Kept as received; nothing reads it.
    std::optional<QString> color;

    friend bool operator==(const OverlayRectangle&, const OverlayRectangle&) = default;
};

} // namespace tessara
