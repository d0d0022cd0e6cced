#pragma once

#include "tessara/kyc/video/CaptureSystem.h"

#include <QString>
#include <memory>

namespace tessara {

// Where the verification screen's cameras come from, by the host's choice (HostHooks::camera).
class KYCCameraChoice {
public:
    KYCCameraChoice() = delete;

    // "system", "synthetic" or "file:PATH"; any other text is fatal, since the host asked for a
    // camera this SDK does not have.
    static std::shared_ptr<CaptureSystem> make(const QString& choice);
    static std::shared_ptr<CaptureSystem> fromHostHooks();
};

} // namespace tessara
