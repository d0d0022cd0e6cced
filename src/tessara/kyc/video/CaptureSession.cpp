#include "tessara/kyc/video/CaptureSession.h"

#include "tessara/kyc/video/VideoDataOutput.h"

#include <algorithm>

namespace tessara {

CaptureSession::~CaptureSession() {
    running_ = false;
    configurationDepth_ = 0;
    apply();
}

void CaptureSession::beginConfiguration() {
    ++configurationDepth_;
}

void CaptureSession::commitConfiguration() {
    if (configurationDepth_ > 0 && --configurationDepth_ == 0)
        apply();
}

bool CaptureSession::canAddInput(const CaptureDevice&) const {
    return inputs_.empty();
}

void CaptureSession::addInput(std::unique_ptr<CaptureDevice> device) {
    inputs_.push_back(std::move(device));
    apply();
}

void CaptureSession::removeInput(const CaptureDevice* device) {
    if (device == streaming_) {
        streaming_->stopStreaming();
        streaming_ = nullptr;
    }
    std::erase_if(inputs_, [&](const auto& input) { return input.get() == device; });
}

bool CaptureSession::canAddOutput(const VideoDataOutput&) const {
    return output_ == nullptr;
}

void CaptureSession::addOutput(VideoDataOutput* output) {
    output_ = output;
    apply();
}

void CaptureSession::startRunning() {
    running_ = true;
    apply();
}

void CaptureSession::stopRunning() {
    running_ = false;
    apply();
}

void CaptureSession::apply() {
    CaptureDevice* wanted =
        running_ && configurationDepth_ == 0 && output_ && !inputs_.empty() ? inputs_.front().get() : nullptr;
    if (wanted == streaming_)
        return;
    if (streaming_)
        streaming_->stopStreaming();
    streaming_ = wanted;
    if (streaming_) {
        VideoDataOutput* output = output_;
        streaming_->startStreaming(
            [output](VideoFrame frame, bool portrait) { output->receive(std::move(frame), portrait); });
    }
}

} // namespace tessara
