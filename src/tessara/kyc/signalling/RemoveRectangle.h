#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "removeRects": take the rectangle away.
struct RemoveRectangle {
    WSCommand cmd = WSCommand::removeOverlayRectangle;

    friend bool operator==(const RemoveRectangle&, const RemoveRectangle&) = default;
};

} // namespace tessara
