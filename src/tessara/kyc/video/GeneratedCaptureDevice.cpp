#include "tessara/kyc/video/GeneratedCaptureDevice.h"

#include <chrono>

namespace tessara {

GeneratedCaptureDevice::GeneratedCaptureDevice(Options options)
    : options_(std::move(options)) {
    // A camera starts on its first format, as a real one starts on a default of its own.
    if (!options_.formats.empty())
        activeFormat_ = options_.formats.front();
}

GeneratedCaptureDevice::~GeneratedCaptureDevice() {
    stopStreaming();
}

bool GeneratedCaptureDevice::lockForConfiguration() {
    locked_ = true;
    return true;
}

void GeneratedCaptureDevice::requireLock() {
    if (!locked_)
        changedWithoutLock_ = true;
}

void GeneratedCaptureDevice::setActiveFormat(const CaptureFormat& format) {
    requireLock();
    activeFormat_ = format;
    minDuration_ = maxDuration_ = {};
}

void GeneratedCaptureDevice::setActiveVideoMinFrameDuration(FrameDuration duration) {
    requireLock();
    minDuration_ = duration;
}

void GeneratedCaptureDevice::setActiveVideoMaxFrameDuration(FrameDuration duration) {
    requireLock();
    maxDuration_ = duration;
}

void GeneratedCaptureDevice::setVideoZoomFactor(double factor) {
    requireLock();
    zoom_ = factor;
}

double GeneratedCaptureDevice::frameRate() const {
    if (maxDuration_.value > 0 && maxDuration_.timescale > 0)
        return double(maxDuration_.timescale) / double(maxDuration_.value);
    double best = 0;
    for (const FrameRateRange& range : activeFormat_.videoSupportedFrameRateRanges)
        best = std::max(best, range.maxFrameRate);
    return best > 0 ? best : 30.0;
}

void GeneratedCaptureDevice::startStreaming(FrameSink sink) {
    stopStreaming();
    streaming_ = true;
    thread_ = std::thread([this, sink = std::move(sink)] {
        using Clock = std::chrono::steady_clock;
        const auto period = std::chrono::duration<double>(1.0 / frameRate());
        const auto start = Clock::now();
        for (int64_t index = 0; streaming_.load(); ++index) {
            if (options_.frameLimit >= 0 && index >= options_.frameLimit)
                break;
            if (options_.paced)
                std::this_thread::sleep_until(start +
                                              std::chrono::duration_cast<Clock::duration>(period * index));
            VideoFrame frame = produce(index);
            frame.captureTimeNs =
                std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now().time_since_epoch()).count();
            sink(std::move(frame), portrait());
        }
    });
}

void GeneratedCaptureDevice::stopStreaming() {
    streaming_ = false;
    if (thread_.joinable())
        thread_.join();
}

} // namespace tessara
