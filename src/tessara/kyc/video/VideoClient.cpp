#include "tessara/kyc/video/VideoClient.h"

#include "tessara/kyc/video/QtCaptureSystem.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/NotificationBus.h"

#include <cstdio>

namespace tessara {

VideoClient::VideoClient(TSRCameraPreviewView* previewView, FrameHandler frameHandler,
                         std::shared_ptr<CaptureSystem> captureSystem, QObject* parent)
    : QObject(parent)
    , previewView(previewView)
    , frameHandler(std::move(frameHandler))
    , captureSystem_(captureSystem ? std::move(captureSystem) : std::make_shared<QtCaptureSystem>()) {
    NotificationBus::instance().subscribe(
        VideoCaptureManager::dimensionsNotificationName(), this,
        [this](const QVariantMap& userInfo) { didChangeVideoCaptureDimensions(userInfo); });
}

VideoClient::~VideoClient() {
    NotificationBus::instance().unsubscribe(this);
    if (captureManager_)
        captureManager_->videoOutput().setSampleBufferDelegate(nullptr, nullptr);
}

VideoCaptureManager& VideoClient::captureManager() {
    if (!captureManager_)
        captureManager_ = std::make_unique<VideoCaptureManager>(captureSystem_, previewView,
                                                                initialCameraPosition, desiredFrameRate);
    return *captureManager_;
}

void VideoClient::resetCaptureManager() {
    captureManager_.reset();
}

void VideoClient::didChangeVideoCaptureDimensions(const QVariantMap& userInfo) {
    const auto dimensions = userInfo.constFind(QStringLiteral("videoDimensions"));
    const auto position = userInfo.constFind(QStringLiteral("cameraPosition"));
    if (dimensions == userInfo.constEnd() || position == userInfo.constEnd())
        fatalError(
            QStringLiteral("The video dimensions notification lacks videoDimensions or cameraPosition"));
    currentCameraPosition = CapturePosition(position->toInt());
    try {
        ensureEncoder(dimensions->value<VideoDimensions>());
    } catch (const std::exception& error) {
        std::printf("%s\n", error.what());
        std::fflush(stdout);
        return;
    }
    if (compressionIsRunning)
        startCompression();
}

void VideoClient::ensureEncoder(VideoDimensions dimensions) {
    if (videoEncoder && videoEncoder->sessionVideoDimensions() == dimensions) {
        videoEncoder->configure(dimensions); // keeps the running session: same stream, no key frame
        return;
    }
    // A new encoder is configured before any frame can reach it, so its handler is set here, once;
    // an encoder already attached keeps the handler it has (the same `frameHandler`), which the
    // output queue may be reading.
    auto encoder = std::make_shared<H264Encoder>(desiredFrameRate, encoderCores);
    encoder->configure(dimensions);
    encoder->naluHandling = frameHandler;
    encoder->pictureObserver = pictureObserver;
    videoEncoder = std::move(encoder);
}

void VideoClient::startCompression() {
    compressionIsRunning = true;
    if (videoEncoder)
        captureManager().videoOutput().setSampleBufferDelegate(videoEncoder,
                                                               &captureManager().videoOutputQueue());
}

void VideoClient::stopCompression() {
    compressionIsRunning = false;
    if (captureManager_)
        captureManager_->videoOutput().setSampleBufferDelegate(nullptr, nullptr);
}

} // namespace tessara
