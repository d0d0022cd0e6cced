#include "tessara/kyc/video/QtCaptureSystem.h"

#include "tessara/kyc/video/QtCaptureDevice.h"

#include <QMediaDevices>
#include <unistd.h>

namespace tessara {

QtCaptureSystem::QtCaptureSystem()
    : inputs_(QMediaDevices::videoInputs())
    , defaultInput_(QMediaDevices::defaultVideoInput()) {}

AuthorizationStatus QtCaptureSystem::authorizationStatus() {
    for (const QCameraDevice& input : inputs_) {
        const QByteArray node = input.id();
        if (node.startsWith("/dev/") && ::access(node.constData(), R_OK | W_OK) != 0)
            return AuthorizationStatus::denied;
    }
    return AuthorizationStatus::authorized;
}

void QtCaptureSystem::requestAccess(std::function<void(bool granted)> completion) {
    completion(authorizationStatus() == AuthorizationStatus::authorized);
}

std::unique_ptr<CaptureDevice> QtCaptureSystem::defaultDevice(CapturePosition position) {
    const QCameraDevice::Position wanted =
        position == CapturePosition::front ? QCameraDevice::FrontFace : QCameraDevice::BackFace;
    for (const QCameraDevice& input : inputs_)
        if (input.position() == wanted)
            return std::make_unique<QtCaptureDevice>(input, position);
    if (!defaultInput_.isNull() && defaultInput_.position() == QCameraDevice::UnspecifiedPosition)
        return std::make_unique<QtCaptureDevice>(defaultInput_, position);
    return nullptr;
}

} // namespace tessara
