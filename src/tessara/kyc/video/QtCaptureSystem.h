#pragma once

#include "tessara/kyc/video/CaptureSystem.h"

#include <QCameraDevice>
#include <QList>

namespace tessara {

// The system's cameras through Qt Multimedia. Make it on the main thread: it takes its list of
// cameras there. Permission on Linux is the access right to the camera's device node; a machine
// without a camera has no default device, which fails configuration.
class QtCaptureSystem : public CaptureSystem {
public:
    QtCaptureSystem();

    AuthorizationStatus authorizationStatus() override;
    // The access rights cannot be asked for: the answer is the current status.
    void requestAccess(std::function<void(bool granted)> completion) override;
    // The camera facing `position`; a camera that does not say where it faces (a desktop's) serves
    // both positions when it is the system default.
    std::unique_ptr<CaptureDevice> defaultDevice(CapturePosition position) override;

private:
    QList<QCameraDevice> inputs_;
    QCameraDevice defaultInput_;
};

} // namespace tessara
