#pragma once

#include "tessara/kyc/video/CapturePosition.h"
#include "tessara/kyc/video/CaptureSystem.h"
#include "tessara/kyc/video/H264Encoder.h"
#include "tessara/kyc/video/SessionSetupResult.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"
#include "tessara/kyc/video/VideoCaptureManager.h"
#include "tessara/kyc/video/VideoDimensions.h"

#include <QObject>
#include <QPointer>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <optional>

namespace tessara {

// Joins the capture manager to the encoder; the verification screen talks to this. It listens for
// the dimensions notification (main thread) and keeps an encoder of the configured size, whose
// units go to `frameHandler` on the video output queue.
class VideoClient : public QObject {
    Q_OBJECT
public:
    using FrameHandler = AnnexBFramer::UnitHandler;

    // Main thread. `captureSystem` is where cameras come from (the system camera when null).
    VideoClient(TSRCameraPreviewView* previewView, FrameHandler frameHandler,
                std::shared_ptr<CaptureSystem> captureSystem = nullptr, QObject* parent = nullptr);
    ~VideoClient() override;

    QPointer<TSRCameraPreviewView> previewView;
    FrameHandler frameHandler;
    CapturePosition initialCameraPosition = CapturePosition::back;
    CapturePosition currentCameraPosition = CapturePosition::back;
    double desiredFrameRate = 30.0;
    std::optional<SessionSetupResult> sessionSetupResult;
    bool compressionIsRunning = false;

    // Made on first use, with the initial position and the desired rate.
    VideoCaptureManager& captureManager();
    bool hasCaptureManager() const { return captureManager_ != nullptr; }
    // Replaces the manager (a fresh session and permission check), as after the background.
    void resetCaptureManager();

    std::shared_ptr<H264Encoder> videoEncoder;
    // Cores the encoder may use (0: those of the host), and who hears each picture's figures; both
    // are given to every encoder made from then on.
    int encoderCores = 0;
    H264Encoder::PictureObserver pictureObserver;

    // Handler of the dimensions notification.
    void didChangeVideoCaptureDimensions(const QVariantMap& userInfo);
    // Keeps the encoder when its size matches, otherwise makes one; configures it. Throws
    // H264Encoder::Error.
    void ensureEncoder(VideoDimensions dimensions);

    // Frames wanted: attaches the encoder (when there is one) to the output.
    void startCompression();
    // Frames not wanted: detaches the encoder.
    void stopCompression();

private:
    std::shared_ptr<CaptureSystem> captureSystem_;
    std::unique_ptr<VideoCaptureManager> captureManager_;
};

} // namespace tessara
