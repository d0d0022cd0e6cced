#include "tessara/kyc/video/VideoFrame.h"

#include <vector>

namespace tessara {

VideoFrame VideoFrame::allocate(Layout layout, int width, int height) {
    const int chromaWidth = (width + 1) / 2;
    const int chromaHeight = (height + 1) / 2;
    const size_t lumaSize = size_t(width) * height;
    const size_t chromaSize = size_t(chromaWidth) * chromaHeight;
    auto bytes = std::make_shared<std::vector<uint8_t>>(lumaSize + 2 * chromaSize);
    uint8_t* base = bytes->data();

    VideoFrame frame;
    frame.layout = layout;
    frame.width = width;
    frame.height = height;
    frame.planes[0] = base;
    frame.strides[0] = width;
    if (layout == Layout::nv12) {
        frame.planes[1] = base + lumaSize;
        frame.strides[1] = chromaWidth * 2;
    } else {
        frame.planes[1] = base + lumaSize;
        frame.planes[2] = base + lumaSize + chromaSize;
        frame.strides[1] = chromaWidth;
        frame.strides[2] = chromaWidth;
    }
    frame.storage = std::move(bytes);
    return frame;
}

} // namespace tessara
