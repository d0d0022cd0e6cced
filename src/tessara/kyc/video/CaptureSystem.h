#pragma once

#include "tessara/kyc/video/AuthorizationStatus.h"
#include "tessara/kyc/video/CaptureDevice.h"
#include "tessara/kyc/video/CapturePosition.h"

#include <functional>
#include <memory>

namespace tessara {

// Where cameras come from and who may use them: the system camera, the synthetic camera or a file.
// Called from the session queue.
class CaptureSystem {
public:
    virtual ~CaptureSystem() = default;

    virtual AuthorizationStatus authorizationStatus() = 0;
    // Asks the user; `completion` gets the answer later, on a thread of the system's choosing.
    virtual void requestAccess(std::function<void(bool granted)> completion) = 0;
    // The default wide-angle camera at `position`; null when there is none.
    virtual std::unique_ptr<CaptureDevice> defaultDevice(CapturePosition position) = 0;
};

} // namespace tessara
