#include "tessara/kyc/video/VideoDataOutput.h"

#include "tessara/kyc/video/SerialQueue.h"

#include <libyuv/rotate.h>

namespace tessara {

void VideoDataOutput::setSampleBufferDelegate(std::shared_ptr<SampleBufferDelegate> delegate,
                                              SerialQueue* queue) {
    std::lock_guard lock(mutex_);
    const bool attaching = delegate && delegate != delegate_;
    delegate_ = std::move(delegate);
    queue_ = delegate_ ? queue : nullptr;
    if (attaching)
        queue_->async([d = delegate_] { d->outputDidAttach(); });
    idle_.notify_all(); // a camera waiting for a detached delegate gives up its frame
}

void VideoDataOutput::setPreviewSink(PreviewSink sink) {
    std::lock_guard lock(mutex_);
    preview_ = std::move(sink);
}

std::shared_ptr<SampleBufferDelegate> VideoDataOutput::sampleBufferDelegate() const {
    std::lock_guard lock(mutex_);
    return delegate_;
}

VideoFrame VideoDataOutput::upright(const VideoFrame& frame, bool portrait) const {
    const int rotation = rotation_.load();
    if (portrait || rotation % 360 == 0)
        return frame;
    const bool quarter = rotation % 180 != 0;
    VideoFrame turned = VideoFrame::allocate(VideoFrame::Layout::i420, quarter ? frame.height : frame.width,
                                             quarter ? frame.width : frame.height);
    turned.captureTimeNs = frame.captureTimeNs;
    const auto mode = libyuv::RotationMode(((rotation % 360) + 360) % 360);
    if (frame.layout == VideoFrame::Layout::nv12)
        libyuv::NV12ToI420Rotate(frame.planes[0], frame.strides[0], frame.planes[1], frame.strides[1],
                                 turned.mutablePlane(0), turned.strides[0], turned.mutablePlane(1),
                                 turned.strides[1], turned.mutablePlane(2), turned.strides[2], frame.width,
                                 frame.height, mode);
    else
        libyuv::I420Rotate(frame.planes[0], frame.strides[0], frame.planes[1], frame.strides[1],
                           frame.planes[2], frame.strides[2], turned.mutablePlane(0), turned.strides[0],
                           turned.mutablePlane(1), turned.strides[1], turned.mutablePlane(2),
                           turned.strides[2], frame.width, frame.height, mode);
    return turned;
}

void VideoDataOutput::receive(VideoFrame frame, bool portrait) {
    std::shared_ptr<SampleBufferDelegate> delegate;
    SerialQueue* queue = nullptr;
    {
        std::unique_lock lock(mutex_);
        if (preview_)
            preview_(frame, portrait, rotation_.load());
        if (!alwaysDiscardsLateVideoFrames.load())
            idle_.wait(lock, [this] { return inFlight_ == 0 || !delegate_; });
        if (!delegate_)
            return;
        if (inFlight_ > 0) {
            ++dropped_;
            return;
        }
        ++inFlight_;
        delegate = delegate_;
        queue = queue_;
    }
    queue->async([this, delegate, frame = std::move(frame), portrait] {
        delegate->captureOutput(upright(frame, portrait));
        {
            std::lock_guard lock(mutex_);
            --inFlight_;
        }
        idle_.notify_all();
    });
}

} // namespace tessara
