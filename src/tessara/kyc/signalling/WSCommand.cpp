#include "tessara/kyc/signalling/WSCommand.h"

#include <array>

namespace tessara {

namespace {
constexpr std::array<std::string_view, 12> kRawValues = {
    "bye", "hb",          "join",    "rects",  "removeRects", "position",
    "ocr", "ocrProgress", "quality", "status", "startCamera", "nn-connected",
};
static_assert(int(WSCommand::nnConnected) == int(kRawValues.size()) - 1, "one wire string per case");
} // namespace

std::string_view rawValueUtf8(WSCommand command) {
    return kRawValues[size_t(command)];
}

std::optional<WSCommand> wsCommandFromRaw(std::string_view raw) {
    for (size_t i = 0; i < kRawValues.size(); ++i)
        if (kRawValues[i] == raw)
            return WSCommand(i);
    return std::nullopt;
}

} // namespace tessara
