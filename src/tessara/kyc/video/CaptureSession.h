#pragma once

#include "tessara/kyc/video/CaptureDevice.h"

#include <memory>
#include <vector>

namespace tessara {

class VideoDataOutput;

// Joins one camera input to one frame output. While it runs and no configuration is open, the
// input streams into the output; changes made between `beginConfiguration` and
// `commitConfiguration` take effect together at the commit. Used from the session queue only.
class CaptureSession {
public:
    enum class Preset { high, inputPriority };

    CaptureSession() = default;
    ~CaptureSession();
    CaptureSession(const CaptureSession&) = delete;
    CaptureSession& operator=(const CaptureSession&) = delete;

    void beginConfiguration();
    void commitConfiguration();

    bool canSetSessionPreset(Preset) const { return true; }
    void setSessionPreset(Preset preset) { preset_ = preset; }
    Preset sessionPreset() const { return preset_; }

    // One camera at a time: a second input is refused.
    bool canAddInput(const CaptureDevice& device) const;
    void addInput(std::unique_ptr<CaptureDevice> device);
    void removeInput(const CaptureDevice* device);
    const std::vector<std::unique_ptr<CaptureDevice>>& inputs() const { return inputs_; }

    bool canAddOutput(const VideoDataOutput& output) const;
    void addOutput(VideoDataOutput* output);
    // The output's video connection (rotation and delegate live on the output); null without one.
    VideoDataOutput* connectionWithMediaTypeVideo() const { return output_; }

    void startRunning();
    void stopRunning();
    bool isRunning() const { return running_; }

private:
    void apply();

    Preset preset_ = Preset::high;
    std::vector<std::unique_ptr<CaptureDevice>> inputs_;
    VideoDataOutput* output_ = nullptr;
    CaptureDevice* streaming_ = nullptr;
    int configurationDepth_ = 0;
    bool running_ = false;
};

} // namespace tessara
