#include "tessara/kyc/signalling/OCRAction.h"

namespace tessara {

std::string_view rawValueUtf8(OCRAction action) {
    return action == OCRAction::start ? "start" : "stop";
}

std::optional<OCRAction> ocrActionFromRaw(std::string_view raw) {
    if (raw == "start")
        return OCRAction::start;
    if (raw == "stop")
        return OCRAction::stop;
    return std::nullopt;
}

} // namespace tessara
