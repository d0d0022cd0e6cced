#pragma once

#include "tessara/kyc/video/VideoDimensions.h"

#include <wels/codec_app_def.h>

namespace tessara {

// The one place where the stream's settings (real-time camera use, baseline profile level 4.1, a
// key frame at least every 60 pictures, quality 0.5, no bit rate) become encoder parameters.
struct H264EncoderParameters {
    static constexpr int kMaxKeyFrameInterval = 60;
    static constexpr double kQuality = 0.5;

    // Fixed quantiser for a quality from 0 (worst) to 1 (best): 40 down to 12, so 0.5 gives 26.
    static int quantizerForQuality(double quality);
    // Encoder threads for a host with `cores` cores: one per core, at most four, each with a slice.
    static int threadsForCores(int cores);

    // Complete parameters for pictures of `size` arriving at up to `frameRate` per second.
    static SEncParamExt make(VideoDimensions size, double frameRate, int cores);
};

} // namespace tessara
