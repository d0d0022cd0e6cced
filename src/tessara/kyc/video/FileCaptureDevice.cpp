#include "tessara/kyc/video/FileCaptureDevice.h"

#include "tessara/platform/Logging.h"

namespace tessara {

namespace {

qint64 frameBytes(int width, int height) {
    return qint64(width) * height * 3 / 2;
}

} // namespace

FileCaptureDevice::FileCaptureDevice(QString path, int frameWidth, int frameHeight, Options options)
    : GeneratedCaptureDevice(std::move(options))
    , file_(path)
    , frameWidth_(frameWidth)
    , frameHeight_(frameHeight)
    , frames_(frameCount(path, frameWidth, frameHeight)) {
    if (!file_.open(QIODevice::ReadOnly))
        qCCritical(lcVideoCapture, "cannot read frames from %s", qPrintable(path));
}

CaptureFormat FileCaptureDevice::sensorFormat(int frameWidth, int frameHeight) {
    return {CaptureFormat::kNV12VideoRange, frameHeight, frameWidth, {{1, 30}}, 69.0f};
}

qint64 FileCaptureDevice::frameCount(const QString& path, int frameWidth, int frameHeight) {
    const qint64 size = QFile(path).size();
    return frameWidth > 0 && frameHeight > 0 ? size / frameBytes(frameWidth, frameHeight) : 0;
}

VideoFrame FileCaptureDevice::produce(int64_t index) {
    VideoFrame frame = VideoFrame::allocate(VideoFrame::Layout::nv12, frameWidth_, frameHeight_);
    if (frames_ <= 0)
        return frame;
    const qint64 bytes = frameBytes(frameWidth_, frameHeight_);
    // Planes are packed one after the other, exactly as the file holds them.
    file_.seek((index % frames_) * bytes);
    file_.read(reinterpret_cast<char*>(frame.mutablePlane(0)), bytes);
    return frame;
}

} // namespace tessara
