#pragma once

#include "tessara/kyc/signalling/KYCCameraPosition.h"
#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "startCamera": which camera to start.
struct KYCStartCameraSignal {
    WSCommand cmd = WSCommand::startCamera;
    KYCCameraPosition type = KYCCameraPosition::back;

    friend bool operator==(const KYCStartCameraSignal&, const KYCStartCameraSignal&) = default;
};

} // namespace tessara
