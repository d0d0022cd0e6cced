#pragma once

#include "tessara/kyc/video/CaptureSystem.h"
#include "tessara/kyc/video/GeneratedCaptureDevice.h"

#include <atomic>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace tessara {

// Cameras drawn by the program, with a permission answer chosen up front: authorised, refused, or
// not yet asked and then granted or refused (the answer comes from another thread, like a system
// dialog's).
class SyntheticCaptureSystem : public CaptureSystem {
public:
    struct Options {
        AuthorizationStatus status = AuthorizationStatus::authorized;
        bool grantsWhenAsked = true;
        int answerDelayMs = 0;
        // The cameras present and what each offers; by default a phone's back and front cameras.
        std::map<CapturePosition, GeneratedCaptureDevice::Options> cameras = defaultCameras();
    };

    SyntheticCaptureSystem();
    explicit SyntheticCaptureSystem(Options options);
    ~SyntheticCaptureSystem() override;

    AuthorizationStatus authorizationStatus() override { return status_.load(); }
    void requestAccess(std::function<void(bool granted)> completion) override;
    std::unique_ptr<CaptureDevice> defaultDevice(CapturePosition position) override;

    int accessRequests() const { return accessRequests_.load(); }
    // The devices handed out, in order; they stay owned by the session. Safe from any thread:
    // devices are made on the capture queue while a test reads this on the main thread.
    std::vector<GeneratedCaptureDevice*> devicesMade() const;

    static std::map<CapturePosition, GeneratedCaptureDevice::Options> defaultCameras();

private:
    Options options_;
    std::atomic<AuthorizationStatus> status_;
    std::atomic<int> accessRequests_{0};
    mutable std::mutex devicesMutex_;
    std::vector<GeneratedCaptureDevice*> devicesMade_; // guarded by devicesMutex_
    std::vector<std::thread> answers_;
};

} // namespace tessara
