#include "tessara/kyc/video/CenterBandCrop.h"

#include <libyuv/planar_functions.h>

namespace tessara {

int CenterBandCrop::topOffset(int frameHeight, int bandHeight) {
    return ((frameHeight - bandHeight) / 2) & ~1;
}

VideoFrame CenterBandCrop::crop(const VideoFrame& frame, VideoDimensions size) {
    if (frame.isEmpty() || size.width <= 0 || size.height <= 0 || frame.width < size.width ||
        frame.height < size.height)
        return {};
    const int top = topOffset(frame.height, size.height);
    const int chromaWidth = (size.width + 1) / 2;
    const int chromaHeight = (size.height + 1) / 2;

    VideoFrame band;
    band.layout = VideoFrame::Layout::i420;
    band.width = size.width;
    band.height = size.height;
    band.captureTimeNs = frame.captureTimeNs;
    band.storage = frame.storage;
    band.planes[0] = frame.planes[0] + size_t(top) * frame.strides[0];
    band.strides[0] = frame.strides[0];

    if (frame.layout == VideoFrame::Layout::i420) {
        for (int plane = 1; plane < 3; ++plane) {
            band.planes[plane] = frame.planes[plane] + size_t(top / 2) * frame.strides[plane];
            band.strides[plane] = frame.strides[plane];
        }
        return band;
    }

    // The encoder copies its input, so the split planes can live here until the next frame.
    chroma_.resize(size_t(chromaWidth) * chromaHeight * 2);
    uint8_t* u = chroma_.data();
    uint8_t* v = u + size_t(chromaWidth) * chromaHeight;
    libyuv::SplitUVPlane(frame.planes[1] + size_t(top / 2) * frame.strides[1], frame.strides[1], u,
                         chromaWidth, v, chromaWidth, chromaWidth, chromaHeight);
    band.planes[1] = u;
    band.planes[2] = v;
    band.strides[1] = chromaWidth;
    band.strides[2] = chromaWidth;
    return band;
}

} // namespace tessara
