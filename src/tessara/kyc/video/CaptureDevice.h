#pragma once

#include "tessara/kyc/video/CaptureFormat.h"
#include "tessara/kyc/video/CapturePosition.h"
#include "tessara/kyc/video/VideoFrame.h"

#include <functional>
#include <vector>

namespace tessara {

// A camera as the capture manager configures it. Configuration calls come from the session queue;
// changing the active format, frame durations or zoom needs the device locked.
class CaptureDevice {
public:
    // Receives each frame on the device's own capture thread. `portrait` says the frame is already
    // turned upright, as some devices deliver; others deliver the sensor's landscape picture.
    using FrameSink = std::function<void(VideoFrame frame, bool portrait)>;

    virtual ~CaptureDevice() = default;

    virtual CapturePosition position() const = 0;
    virtual std::vector<CaptureFormat> formats() const = 0;

    // False when the device cannot be configured now (another client holds it).
    virtual bool lockForConfiguration() = 0;
    virtual void unlockForConfiguration() = 0;

    virtual CaptureFormat activeFormat() const = 0;
    virtual void setActiveFormat(const CaptureFormat& format) = 0;
    virtual void setActiveVideoMinFrameDuration(FrameDuration duration) = 0;
    virtual void setActiveVideoMaxFrameDuration(FrameDuration duration) = 0;

    // Nearest focus in millimetres; -1 when unknown.
    virtual int minimumFocusDistance() const = 0;
    virtual void setVideoZoomFactor(double factor) = 0;

    // Starts delivering frames to `sink` until `stopStreaming`; the sink may be called from the
    // moment this is entered until `stopStreaming` returns.
    virtual void startStreaming(FrameSink sink) = 0;
    virtual void stopStreaming() = 0;
};

} // namespace tessara
