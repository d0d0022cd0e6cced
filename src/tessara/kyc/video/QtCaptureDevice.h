#pragma once

#include "tessara/kyc/video/CaptureDevice.h"

#include <QCameraDevice>
#include <QCameraFormat>
#include <memory>

class QVideoFrame;

namespace tessara {

// One system camera through Qt Multimedia: its formats come from the camera's own list, frames
// from a video sink, zoom from the camera where the backend offers it. Qt's camera objects live on
// the main thread; this object may be used from the session queue, and it never waits for the main
// thread. Qt 6.4 cannot pin the frame rate: choosing the format whose range holds it is all it takes.
class QtCaptureDevice : public CaptureDevice {
public:
    QtCaptureDevice(QCameraDevice device, CapturePosition position);
    ~QtCaptureDevice() override;

    CapturePosition position() const override { return position_; }
    std::vector<CaptureFormat> formats() const override;
    bool lockForConfiguration() override { return true; }
    void unlockForConfiguration() override {}
    CaptureFormat activeFormat() const override;
    void setActiveFormat(const CaptureFormat& format) override;
    void setActiveVideoMinFrameDuration(FrameDuration) override {}
    void setActiveVideoMaxFrameDuration(FrameDuration) override {}
    int minimumFocusDistance() const override { return -1; }
    void setVideoZoomFactor(double factor) override { zoom_ = factor; }
    void startStreaming(FrameSink sink) override;
    void stopStreaming() override;

    // A camera frame as NV12 or I420, copied out of the frame's mapping; empty when unreadable.
    static VideoFrame toVideoFrame(const QVideoFrame& frame);
    static CaptureFormat toCaptureFormat(const QCameraFormat& format);

private:
    struct Stream;

    QCameraDevice device_;
    CapturePosition position_;
    QCameraFormat active_;
    double zoom_ = 1.0;
    std::shared_ptr<Stream> stream_;
};

} // namespace tessara
