#pragma once

#include "tessara/kyc/video/VideoFrame.h"

namespace tessara {

// What the capture output hands its frames to. Both calls arrive on the output queue.
class SampleBufferDelegate {
public:
    virtual ~SampleBufferDelegate() = default;
    // One portrait frame from the camera.
    virtual void captureOutput(const VideoFrame& frame) = 0;
    // The output starts handing frames to this delegate (again); frames before were not seen.
    virtual void outputDidAttach() {}
};

} // namespace tessara
