#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

#include <QString>

namespace tessara {

// "quality": "OK" when the picture is good, any other text names the problem.
struct OCRQualityMessage {
    WSCommand cmd = WSCommand::quality;
    QString msg;

    friend bool operator==(const OCRQualityMessage&, const OCRQualityMessage&) = default;
};

} // namespace tessara
