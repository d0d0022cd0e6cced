#pragma once

#include <QString>
#include <optional>

namespace tessara {

// A narrow request a control makes of its screen. A control never holds its screen: it
// walks its parent chain (parentResponders) and uses the first object that implements
// the interface; with none, the action does nothing.
class TSRLinkFollower {
public:
    virtual ~TSRLinkFollower() = default;
    // Shows a step document that ships with the SDK, named `directionId`.
    virtual void followLink(const std::optional<QString>& directionId, const std::optional<QString>& key) = 0;
};

} // namespace tessara
