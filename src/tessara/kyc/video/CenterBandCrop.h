#pragma once

#include "tessara/kyc/video/VideoDimensions.h"
#include "tessara/kyc/video/VideoFrame.h"

#include <cstdint>
#include <vector>

namespace tessara {

// Keeps the centre band of a portrait frame at the configured size, as three I420 planes for the
// encoder. The luma plane (and an I420 source's chroma) is selected by pointer offsets alone; only
// an NV12 source's interleaved chroma is split, into buffers this object reuses. One per encoder,
// used from one thread at a time.
class CenterBandCrop {
public:
    // The band of `frame` at `size`: x 0, rows starting halfway down the surplus height (rounded to
    // an even row so chroma stays aligned). Planes stay valid until the next call or until `frame`
    // is released. Empty when the frame is smaller than `size`.
    VideoFrame crop(const VideoFrame& frame, VideoDimensions size);

    // Rows cut at the top of a frame `frameHeight` high to keep `bandHeight` rows in the middle.
    static int topOffset(int frameHeight, int bandHeight);

private:
    std::vector<uint8_t> chroma_;
};

} // namespace tessara
