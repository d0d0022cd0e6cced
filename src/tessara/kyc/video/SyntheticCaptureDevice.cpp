#include "tessara/kyc/video/SyntheticCaptureDevice.h"

namespace tessara {

SyntheticCaptureDevice::SyntheticCaptureDevice(Options options)
    : GeneratedCaptureDevice(std::move(options)) {}

std::vector<CaptureFormat> SyntheticCaptureDevice::phoneFormats() {
    const std::vector<FrameRateRange> upTo30{{1, 30}};
    return {
        {CaptureFormat::kNV12VideoRange, 1280, 720, {{1, 60}}, 58.0f},
        {CaptureFormat::kNV12FullRange, 1280, 720, {{1, 60}}, 58.0f},
        {CaptureFormat::kNV12VideoRange, 1920, 1080, upTo30, 58.0f},
        {CaptureFormat::kBGRA, 1920, 1080, upTo30, 58.0f},
        {CaptureFormat::kNV12VideoRange, 1920, 1440, upTo30, 69.0f},
        {CaptureFormat::kNV12FullRange, 1920, 1440, upTo30, 69.0f},
        {CaptureFormat::kNV12VideoRange, 4032, 3024, upTo30, 69.0f},
    };
}

VideoFrame SyntheticCaptureDevice::produce(int64_t index) {
    const CaptureFormat format = activeFormat();
    // Upright: the sensor's height becomes the picture's width.
    const int width = format.height, height = format.width;
    if (!scene_ || scene_->width() != width || scene_->height() != height)
        scene_ = std::make_unique<SyntheticScene>(position() == CapturePosition::front
                                                      ? SyntheticScene::Subject::face
                                                      : SyntheticScene::Subject::document,
                                                  width, height);
    return scene_->render(index);
}

} // namespace tessara
