#pragma once

#include <array>
#include <cstdint>
#include <memory>

namespace tessara {

// One camera picture in 4:2:0: NV12 (a luma plane and an interleaved chroma plane) or I420 (three
// planes). Planes are pointers into `storage`, which keeps the bytes alive while the frame travels
// between threads; copying a frame copies no pixels.
struct VideoFrame {
    enum class Layout { nv12, i420 };

    Layout layout = Layout::nv12;
    int width = 0;
    int height = 0;
    std::array<const uint8_t*, 3> planes{};
    std::array<int, 3> strides{};
    // Monotonic capture time (steady clock, nanoseconds), for latency figures.
    int64_t captureTimeNs = 0;
    std::shared_ptr<const void> storage;

    bool isEmpty() const { return width <= 0 || height <= 0 || planes[0] == nullptr; }

    // A frame with freshly allocated, tightly packed planes; `mutablePlane` writes into them.
    static VideoFrame allocate(Layout layout, int width, int height);
    uint8_t* mutablePlane(int index) const { return const_cast<uint8_t*>(planes[index]); }
};

} // namespace tessara
