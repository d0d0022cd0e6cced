#include "tessara/kyc/KYCCapture.h"

#include "tessara/kyc/LivePicture.h"
#include "tessara/kyc/video/VideoClient.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/MainThread.h"

namespace tessara {

KYCCapture::KYCCapture(QObject* context, std::unique_ptr<VideoClient> client, LivePicture* livePicture)
    : context_(context)
    , client_(std::move(client))
    , livePicture_(livePicture) {}

KYCCapture::~KYCCapture() = default;

VideoCaptureManager& KYCCapture::captureManager() {
    VideoCaptureManager& manager = client_->captureManager();
    // A new manager (the first, or one made after the background) feeds the preview too.
    if (previewFedBy_ != &manager) {
        manager.videoOutput().setPreviewSink(livePicture_->sink());
        previewFedBy_ = &manager;
    }
    return manager;
}

void KYCCapture::start(CapturePosition position) {
    if (starting)
        starting(position);
    client_->initialCameraPosition = position;
    client_->currentCameraPosition = position;
    client_->desiredFrameRate = kDesiredFrameRate;
    livePicture_->setMirrored(position == CapturePosition::front);
    // The answer may come after the screen is gone; the context is the weak hold.
    captureManager().startRunning([this, context = context_](SessionSetupResult result) {
        runOnMain(context, [this, result] {
            client_->sessionSetupResult = result;
            switch (result) {
            case SessionSetupResult::success:
                cameraHasStarted_ = true;
                startFramesIfReady();
                break;
            case SessionSetupResult::notAuthorized:
                if (cameraRefused)
                    cameraRefused();
                break;
            case SessionSetupResult::configurationFailed:
                fatalError(QStringLiteral("camera configuration failed"));
            }
        });
    });
}

void KYCCapture::startFramesIfReady() {
    if (!cameraHasStarted_ || !serviceReady || !serviceReady())
        return;
    isSessionRunning_ = true;
    client_->startCompression();
}

void KYCCapture::stop() {
    if (!isSessionRunning_)
        return;
    client_->stopCompression();
    captureManager().stop();
    isSessionRunning_ = false;
}

void KYCCapture::switchCamera(CapturePosition position) {
    client_->compressionIsRunning = true;
    VideoCaptureManager& manager = captureManager();
    manager.videoOutput().setSampleBufferDelegate(nullptr, nullptr);
    livePicture_->setMirrored(position == CapturePosition::front);
    manager.changeCamera(position, client_->desiredFrameRate);
}

void KYCCapture::enterBackground() {
    client_->videoEncoder.reset();
    client_->stopCompression();
    captureManager().stop();
}

void KYCCapture::returnToForeground(CapturePosition position) {
    client_->resetCaptureManager();
    previewFedBy_ = nullptr;
    runOnMain(context_, [this, position] { start(position); });
}

} // namespace tessara
