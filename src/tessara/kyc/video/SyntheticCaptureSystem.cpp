#include "tessara/kyc/video/SyntheticCaptureSystem.h"

#include "tessara/kyc/video/SyntheticCaptureDevice.h"

#include <chrono>

namespace tessara {

SyntheticCaptureSystem::SyntheticCaptureSystem()
    : SyntheticCaptureSystem(Options{}) {}

SyntheticCaptureSystem::SyntheticCaptureSystem(Options options)
    : options_(std::move(options))
    , status_(options_.status) {}

SyntheticCaptureSystem::~SyntheticCaptureSystem() {
    for (std::thread& answer : answers_)
        answer.join();
}

std::map<CapturePosition, GeneratedCaptureDevice::Options> SyntheticCaptureSystem::defaultCameras() {
    // A phone's back camera focuses from 20 cm; its front one has a fixed focus (unknown distance).
    return {{CapturePosition::back,
             {CapturePosition::back, SyntheticCaptureDevice::phoneFormats(), 200, true, -1}},
            {CapturePosition::front,
             {CapturePosition::front, SyntheticCaptureDevice::phoneFormats(), -1, true, -1}}};
}

void SyntheticCaptureSystem::requestAccess(std::function<void(bool granted)> completion) {
    ++accessRequests_;
    answers_.emplace_back([this, completion = std::move(completion)] {
        std::this_thread::sleep_for(std::chrono::milliseconds(options_.answerDelayMs));
        const bool granted = options_.grantsWhenAsked;
        status_ = granted ? AuthorizationStatus::authorized : AuthorizationStatus::denied;
        completion(granted);
    });
}

std::unique_ptr<CaptureDevice> SyntheticCaptureSystem::defaultDevice(CapturePosition position) {
    const auto found = options_.cameras.find(position);
    if (found == options_.cameras.end())
        return nullptr;
    auto device = std::make_unique<SyntheticCaptureDevice>(found->second);
    const std::lock_guard lock(devicesMutex_);
    devicesMade_.push_back(device.get());
    return device;
}

std::vector<GeneratedCaptureDevice*> SyntheticCaptureSystem::devicesMade() const {
    const std::lock_guard lock(devicesMutex_);
    return devicesMade_;
}

} // namespace tessara
