#pragma once

#include "tessara/kyc/signalling/OCRAction.h"
#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "ocr": start or stop the document reading.
struct OCRActionSignal {
    using OCRAction = tessara::OCRAction;

    WSCommand cmd = WSCommand::ocrAction;
    OCRAction type = OCRAction::start;

    friend bool operator==(const OCRActionSignal&, const OCRActionSignal&) = default;
};

} // namespace tessara
