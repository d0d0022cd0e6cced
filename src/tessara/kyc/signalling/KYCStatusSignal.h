#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

#include <QString>

namespace tessara {

// "status": the status word of the verification.
struct KYCStatusSignal {
    WSCommand cmd = WSCommand::status;
    QString type;

    friend bool operator==(const KYCStatusSignal&, const KYCStatusSignal&) = default;
};

// The five status words that end the verification: "KYC_STATUS_SELFIE_OK", "KYC_STATUS_FAILED",
// "FAILED_NO_VIDEO_STREAM_CONNECTION", "PROCESS_SUCCESS", "PROCESS_FAIL".
bool isTerminalStatus(const QString& type);

} // namespace tessara
