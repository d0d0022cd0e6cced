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

} // namespace tessara
