#pragma once

#include "tessara/kyc/video/SampleBufferDelegate.h"
#include "tessara/kyc/video/VideoFrame.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>

namespace tessara {

class SerialQueue;

// The session's frame output: takes frames from the camera's thread, turns landscape ones upright
// by the connection's rotation, and hands them to the sample delegate on its queue. A frame that
// arrives while the previous one is still waiting is dropped (as a late camera frame is), unless
// `alwaysDiscardsLateVideoFrames` is off, when the camera waits instead.
class VideoDataOutput {
public:
    VideoDataOutput() = default;
    VideoDataOutput(const VideoDataOutput&) = delete;
    VideoDataOutput& operator=(const VideoDataOutput&) = delete;

    // Attaches `delegate` (or detaches with null); its calls run on `queue`, which must outlive
    // the frames in flight. Safe from any thread: the main thread, the socket's and the
    // notification's all attach and detach.
    void setSampleBufferDelegate(std::shared_ptr<SampleBufferDelegate> delegate, SerialQueue* queue);
    std::shared_ptr<SampleBufferDelegate> sampleBufferDelegate() const;

    // A second reader of every frame, attached or not to a delegate: the on-screen preview. It gets
    // the frame as the camera made it, with `portrait` and the rotation to turn it upright, on the
    // camera's thread, and must return at once (keep the frame, draw it elsewhere). Any thread.
    using PreviewSink = std::function<void(const VideoFrame& frame, bool portrait, int rotation)>;
    void setPreviewSink(PreviewSink sink);

    // The connection's rotation in degrees (90 gives portrait from a landscape sensor).
    void setVideoRotationAngle(int degrees) { rotation_.store(degrees); }
    int videoRotationAngle() const { return rotation_.load(); }

    std::atomic<bool> alwaysDiscardsLateVideoFrames{true};

    // From the camera's thread: one frame, upright already or in the sensor's orientation.
    void receive(VideoFrame frame, bool portrait);
    // Frames dropped because the delegate was still busy.
    int64_t droppedFrames() const { return dropped_.load(); }

private:
    VideoFrame upright(const VideoFrame& frame, bool portrait) const;

    // The delegate and the in-flight count are read by the camera's thread and written from the
    // attaching threads and the output queue, so one mutex guards them.
    mutable std::mutex mutex_;
    std::condition_variable idle_;
    std::shared_ptr<SampleBufferDelegate> delegate_;
    SerialQueue* queue_ = nullptr;
    PreviewSink preview_;
    int inFlight_ = 0;
    std::atomic<int> rotation_{0};
    std::atomic<int64_t> dropped_{0};
};

} // namespace tessara
