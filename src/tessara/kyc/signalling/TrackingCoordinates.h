#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "position": the fingertip, as fractions of the preview. The values arrive as texts; a text that is
// no number reads as 0.0.
struct TrackingCoordinates {
    WSCommand cmd = WSCommand::trackingCoordinates;
    double x = 0;
    double y = 0;

    friend bool operator==(const TrackingCoordinates&, const TrackingCoordinates&) = default;
};

} // namespace tessara
