#pragma once

#include "tessara/kyc/video/CaptureSystem.h"
#include "tessara/kyc/video/GeneratedCaptureDevice.h"

#include <QString>

namespace tessara {

// One camera, at the chosen position, that plays a file of raw NV12 frames; always authorised.
class FileCaptureSystem : public CaptureSystem {
public:
    struct Options {
        QString path;
        int frameWidth = 1440;
        int frameHeight = 1920;
        CapturePosition position = CapturePosition::back;
        bool paced = true;
        int64_t frameLimit = -1;
    };

    explicit FileCaptureSystem(Options options);

    AuthorizationStatus authorizationStatus() override { return AuthorizationStatus::authorized; }
    void requestAccess(std::function<void(bool granted)> completion) override { completion(true); }
    std::unique_ptr<CaptureDevice> defaultDevice(CapturePosition position) override;

private:
    Options options_;
};

} // namespace tessara
