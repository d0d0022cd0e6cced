#pragma once

#include <optional>
#include <string_view>

namespace tessara {

// The `cmd` of every signalling message; the raw strings are the wire values.
enum class WSCommand {
    bye,
    heartbeat,
    join,
    overlayRectangle,
    removeOverlayRectangle,
    trackingCoordinates,
    ocrAction,
    ocrProgress,
    quality,
    status,
    startCamera,
    nnConnected,
};

// The wire string of a case ("bye", "hb", "rects", ...).
std::string_view rawValueUtf8(WSCommand command);
// The case of a wire string, matched exactly and case-sensitively; std::nullopt for any other text.
std::optional<WSCommand> wsCommandFromRaw(std::string_view raw);

} // namespace tessara
