#pragma once

#include "tessara/kyc/video/GeneratedCaptureDevice.h"
#include "tessara/kyc/video/SyntheticScene.h"

#include <memory>

namespace tessara {

// The synthetic camera: a document card behind the back camera, a face in front of the front one,
// with hand motion and sensor noise, at the active format's size. It draws the picture upright, as
// the output would turn it, which costs less than drawing it sideways and rotating it.
class SyntheticCaptureDevice : public GeneratedCaptureDevice {
public:
    explicit SyntheticCaptureDevice(Options options);

    // The formats of a typical phone camera: 1280x720, 1920x1080, 1920x1440 and 4032x3024 in NV12
    // video range, up to 30 frames per second (60 at 1280x720), plus full-range and BGRA ones.
    static std::vector<CaptureFormat> phoneFormats();

protected:
    VideoFrame produce(int64_t index) override;
    bool portrait() const override { return true; }

private:
    std::unique_ptr<SyntheticScene> scene_;
};

} // namespace tessara
