#pragma once

#include "tessara/kyc/video/CaptureDevice.h"

#include <atomic>
#include <cstdint>
#include <thread>

namespace tessara {

// A camera whose pictures are made by the program (drawn or read from a file). It keeps the
// configuration a real camera keeps, so the capture manager's choices can be read back, and runs a
// capture thread that delivers one picture per frame duration, or as fast as the output takes them
// when not paced.
class GeneratedCaptureDevice : public CaptureDevice {
public:
    struct Options {
        CapturePosition position = CapturePosition::back;
        std::vector<CaptureFormat> formats;
        int minimumFocusDistance = -1;
        bool paced = true;       // deliver at the configured frame rate, or as fast as taken
        int64_t frameLimit = -1; // stop after this many pictures; -1 for no limit
    };

    explicit GeneratedCaptureDevice(Options options);
    ~GeneratedCaptureDevice() override;

    CapturePosition position() const override { return options_.position; }
    std::vector<CaptureFormat> formats() const override { return options_.formats; }
    bool lockForConfiguration() override;
    void unlockForConfiguration() override { locked_ = false; }
    CaptureFormat activeFormat() const override { return activeFormat_; }
    void setActiveFormat(const CaptureFormat& format) override;
    void setActiveVideoMinFrameDuration(FrameDuration duration) override;
    void setActiveVideoMaxFrameDuration(FrameDuration duration) override;
    int minimumFocusDistance() const override { return options_.minimumFocusDistance; }
    void setVideoZoomFactor(double factor) override;
    void startStreaming(FrameSink sink) override;
    void stopStreaming() override;

    // What the manager configured, for checks.
    FrameDuration activeVideoMinFrameDuration() const { return minDuration_; }
    FrameDuration activeVideoMaxFrameDuration() const { return maxDuration_; }
    double videoZoomFactor() const { return zoom_; }
    // A change was made without the lock (a fault a real camera would raise on).
    bool changedWithoutLock() const { return changedWithoutLock_; }

protected:
    // Picture number `index`, upright (portrait) when `portrait()` is true. Capture thread.
    virtual VideoFrame produce(int64_t index) = 0;
    virtual bool portrait() const = 0;
    // The frame rate the camera runs at: the pinned duration, else the format's highest rate.
    double frameRate() const;

private:
    void requireLock();

    Options options_;
    CaptureFormat activeFormat_;
    FrameDuration minDuration_;
    FrameDuration maxDuration_;
    double zoom_ = 1.0;
    bool locked_ = false;
    bool changedWithoutLock_ = false;
    std::atomic<bool> streaming_{false};
    std::thread thread_;
};

} // namespace tessara
