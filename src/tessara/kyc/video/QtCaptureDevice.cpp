#include "tessara/kyc/video/QtCaptureDevice.h"

#include "tessara/platform/MainThread.h"

#include <QCamera>
#include <QImage>
#include <QMediaCaptureSession>
#include <QVideoFrame>
#include <QVideoSink>
#include <chrono>
#include <cstring>
#include <libyuv/convert.h>
#include <libyuv/convert_from_argb.h>
#include <mutex>

namespace tessara {

// The Qt objects of a running camera, made and deleted on the main thread. The sink may be called
// from a backend thread while the session queue stops the stream, so the mutex guards it.
struct QtCaptureDevice::Stream {
    std::mutex mutex;
    FrameSink sink;
    std::unique_ptr<QCamera> camera;
    std::unique_ptr<QMediaCaptureSession> session;
    std::unique_ptr<QVideoSink> videoSink;
};

namespace {

uint32_t mediaSubtype(QVideoFrameFormat::PixelFormat format) {
    switch (format) {
    case QVideoFrameFormat::Format_NV12:
        return CaptureFormat::kNV12VideoRange;
    case QVideoFrameFormat::Format_YUYV:
        return CaptureFormat::kYUY2;
    case QVideoFrameFormat::Format_BGRA8888:
    case QVideoFrameFormat::Format_BGRX8888:
        return CaptureFormat::kBGRA;
    default:
        return 0; // not one the camera code asks for
    }
}

int64_t nowNs() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace

QtCaptureDevice::QtCaptureDevice(QCameraDevice device, CapturePosition position)
    : device_(std::move(device))
    , position_(position) {}

QtCaptureDevice::~QtCaptureDevice() {
    stopStreaming();
}

CaptureFormat QtCaptureDevice::toCaptureFormat(const QCameraFormat& format) {
    return {mediaSubtype(format.pixelFormat()),
            format.resolution().width(),
            format.resolution().height(),
            {{format.minFrameRate(), format.maxFrameRate()}},
            0.0f};
}

std::vector<CaptureFormat> QtCaptureDevice::formats() const {
    std::vector<CaptureFormat> formats;
    for (const QCameraFormat& format : device_.videoFormats())
        formats.push_back(toCaptureFormat(format));
    return formats;
}

CaptureFormat QtCaptureDevice::activeFormat() const {
    return active_.isNull() ? CaptureFormat{} : toCaptureFormat(active_);
}

void QtCaptureDevice::setActiveFormat(const CaptureFormat& format) {
    for (const QCameraFormat& candidate : device_.videoFormats())
        if (toCaptureFormat(candidate) == format) {
            active_ = candidate;
            return;
        }
}

VideoFrame QtCaptureDevice::toVideoFrame(const QVideoFrame& source) {
    QVideoFrame frame(source);
    if (!frame.map(QVideoFrame::ReadOnly))
        return {};
    const int w = frame.width(), h = frame.height();
    VideoFrame out;
    switch (frame.pixelFormat()) {
    case QVideoFrameFormat::Format_NV12:
        out = VideoFrame::allocate(VideoFrame::Layout::nv12, w, h);
        libyuv::CopyPlane(frame.bits(0), frame.bytesPerLine(0), out.mutablePlane(0), out.strides[0], w, h);
        libyuv::CopyPlane(frame.bits(1), frame.bytesPerLine(1), out.mutablePlane(1), out.strides[1],
                          out.strides[1], (h + 1) / 2);
        break;
    case QVideoFrameFormat::Format_YUV420P:
        out = VideoFrame::allocate(VideoFrame::Layout::i420, w, h);
        libyuv::I420Copy(frame.bits(0), frame.bytesPerLine(0), frame.bits(1), frame.bytesPerLine(1),
                         frame.bits(2), frame.bytesPerLine(2), out.mutablePlane(0), out.strides[0],
                         out.mutablePlane(1), out.strides[1], out.mutablePlane(2), out.strides[2], w, h);
        break;
    case QVideoFrameFormat::Format_YUYV:
        out = VideoFrame::allocate(VideoFrame::Layout::i420, w, h);
        libyuv::YUY2ToI420(frame.bits(0), frame.bytesPerLine(0), out.mutablePlane(0), out.strides[0],
                           out.mutablePlane(1), out.strides[1], out.mutablePlane(2), out.strides[2], w, h);
        break;
    default: {
        frame.unmap();
        // Anything else goes through Qt's own conversion; slower, but only for odd cameras.
        const QImage image = source.toImage().convertToFormat(QImage::Format_ARGB32);
        out = VideoFrame::allocate(VideoFrame::Layout::i420, image.width(), image.height());
        libyuv::ARGBToI420(image.constBits(), int(image.bytesPerLine()), out.mutablePlane(0), out.strides[0],
                           out.mutablePlane(1), out.strides[1], out.mutablePlane(2), out.strides[2],
                           image.width(), image.height());
        return out;
    }
    }
    frame.unmap();
    return out;
}

void QtCaptureDevice::startStreaming(FrameSink sink) {
    stopStreaming();
    auto stream = std::make_shared<Stream>();
    stream->sink = std::move(sink);
    stream_ = stream;
    runOnMain([stream, device = device_, format = active_, zoom = zoom_] {
        {
            std::lock_guard lock(stream->mutex);
            if (!stream->sink)
                return; // stopped before it started
        }
        stream->camera = std::make_unique<QCamera>(device);
        if (!format.isNull())
            stream->camera->setCameraFormat(format);
        stream->session = std::make_unique<QMediaCaptureSession>();
        stream->videoSink = std::make_unique<QVideoSink>();
        stream->session->setCamera(stream->camera.get());
        stream->session->setVideoSink(stream->videoSink.get());
        // Frames may come on a backend thread: convert there, and never touch the Qt objects.
        QObject::connect(
            stream->videoSink.get(), &QVideoSink::videoFrameChanged, stream->videoSink.get(),
            [weak = std::weak_ptr<Stream>(stream)](const QVideoFrame& qtFrame) {
                const auto held = weak.lock();
                if (!held)
                    return;
                VideoFrame frame = toVideoFrame(qtFrame);
                frame.captureTimeNs = nowNs();
                std::lock_guard lock(held->mutex);
                if (held->sink && !frame.isEmpty())
                    held->sink(std::move(frame), false);
            },
            Qt::DirectConnection);
        stream->camera->start();
        if (zoom > 1.0 && stream->camera->maximumZoomFactor() > 1.0f)
            stream->camera->setZoomFactor(float(std::min<double>(zoom, stream->camera->maximumZoomFactor())));
    });
}

void QtCaptureDevice::stopStreaming() {
    if (!stream_)
        return;
    {
        std::lock_guard lock(stream_->mutex);
        stream_->sink = nullptr;
    }
    // The Qt objects go on the main thread; nothing waits for that.
    runOnMain([stream = std::move(stream_)] {
        if (stream->camera)
            stream->camera->stop();
        stream->videoSink.reset();
        stream->session.reset();
        stream->camera.reset();
    });
    stream_.reset();
}

} // namespace tessara
