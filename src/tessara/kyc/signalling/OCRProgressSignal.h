#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "ocrProgress": how far the document reading is. The values arrive as texts; a text that is no
// number ends the program (the service promised numbers and the progress shown would be a guess).
struct OCRProgressSignal {
    WSCommand cmd = WSCommand::ocrProgress;
    float current = 0;
    float max = 0;

    friend bool operator==(const OCRProgressSignal&, const OCRProgressSignal&) = default;
};

} // namespace tessara
