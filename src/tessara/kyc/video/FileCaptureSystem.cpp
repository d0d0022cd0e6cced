#include "tessara/kyc/video/FileCaptureSystem.h"

#include "tessara/kyc/video/FileCaptureDevice.h"

namespace tessara {

FileCaptureSystem::FileCaptureSystem(Options options)
    : options_(std::move(options)) {}

std::unique_ptr<CaptureDevice> FileCaptureSystem::defaultDevice(CapturePosition position) {
    if (position != options_.position)
        return nullptr;
    GeneratedCaptureDevice::Options device;
    device.position = position;
    device.formats = {FileCaptureDevice::sensorFormat(options_.frameWidth, options_.frameHeight)};
    device.paced = options_.paced;
    device.frameLimit = options_.frameLimit;
    return std::make_unique<FileCaptureDevice>(options_.path, options_.frameWidth, options_.frameHeight,
                                               std::move(device));
}

} // namespace tessara
