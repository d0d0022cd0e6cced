#pragma once

#include <cstdint>
#include <vector>

namespace tessara {

// Frames per second a format can run at, inclusive.
struct FrameRateRange {
    double minFrameRate = 0;
    double maxFrameRate = 0;
};

// A frame duration as a fraction of a second: value / timescale.
struct FrameDuration {
    int64_t value = 0;
    int32_t timescale = 0;

    friend bool operator==(const FrameDuration&, const FrameDuration&) = default;
};

// One format a camera offers, in the camera's own (landscape) orientation.
struct CaptureFormat {
    // The 8-bit bi-planar 4:2:0 video-range pixel format ('420v'): NV12 with luma 16 to 235.
    static constexpr uint32_t kNV12VideoRange = 875704438;
    // The same with full-range luma ('420f').
    static constexpr uint32_t kNV12FullRange = 875704422;
    // Packed 4:2:2 ('yuvs') and 32-bit BGRA ('BGRA'), other formats cameras offer.
    static constexpr uint32_t kYUY2 = 2037741171;
    static constexpr uint32_t kBGRA = 1111970369;

    uint32_t mediaSubtype = kNV12VideoRange;
    int32_t width = 0;
    int32_t height = 0;
    std::vector<FrameRateRange> videoSupportedFrameRateRanges;
    float videoFieldOfView = 0; // horizontal, in degrees

    friend bool operator==(const CaptureFormat& a, const CaptureFormat& b) {
        return a.mediaSubtype == b.mediaSubtype && a.width == b.width && a.height == b.height;
    }
};

} // namespace tessara
