#pragma once

#include "tessara/api/TSRViewController.h"
#include "tessara/kyc/KYCCapture.h"
#include "tessara/kyc/signalling/TSRNativeSignallingDelegate.h"
#include "tessara/kyc/video/CapturePosition.h"
#include "tessara/kyc/video/CaptureSystem.h"

#include <QNetworkReply>
#include <QPointer>
#include <atomic>
#include <memory>
#include <optional>

namespace tessara {

class ActivityIndicator;
class BusyButton;
class KYCFrameSender;
class KYCGuidance;
class LivePicture;
class TSRCameraPreviewView;
class TSRNativeSignallingClient;
class VideoClient;

// The screen of an identity verification step. The verification service drives it over the
// step's WebSocket: it starts the camera, says when it takes frames, switches between the
// document and the face, shows guidance, and ends the step with a status word, after which the
// screen leaves through a submission of the step. Main thread only, except the flag writes of
// TSRNativeSignallingDelegate.
class TSRNativeKYCController : public TSRViewController, public TSRNativeSignallingDelegate {
    Q_OBJECT
public:
    // The application events the screen listens to.
    enum class AppEvent { willResignActive, didEnterBackground, willEnterForeground, didBecomeActive };

    // Fatal when the document's settings lack a userHash or a streamUrl. Cameras come from
    // `captureSystem`, or from the host's choice (HostHooks::camera) when it is null.
    explicit TSRNativeKYCController(const SubmissionJSON& document, TSRDelegate* formDelegate = nullptr,
                                    std::shared_ptr<CaptureSystem> captureSystem = nullptr,
                                    QWidget* parent = nullptr);
    ~TSRNativeKYCController() override;

    // Builds the views, opens the socket and starts listening to the application's state, unless
    // done already; showing the screen does it too.
    void loadViewIfNeeded();
    void setVisible(bool visible) override;

    // Asks the service for the step's status once; the answer is handled like a status message.
    // Nothing calls it on its own: a host that wants polling calls it at its own rhythm.
    void getKYCStatus();

    // The continue button's action: leaves the step toward the target the status decided, or
    // opens the system settings when the camera was refused.
    void followRedirection();
    // The close button's action: asks the user first.
    void confirmClose();
    // Stops everything, says goodbye to the service and tells the host where the user left.
    void closeStep();
    void handleAppState(AppEvent event);

    // TSRNativeSignallingDelegate
    void didReceiveOverlayRectangle(const OverlayRectangle& rectangle) override;
    void didRemoveOverlayRectangle(const RemoveRectangle& message) override;
    void didReceiveTrackingCoordinates(double x, double y) override;
    void didReceiveOCRAction(OCRAction action) override;
    void didReceiveOCRProgress(float current, float max) override;
    void didReceiveQuality(const QString& msg) override;
    void didReceiveStatus(const QString& type) override;
    void didReceiveStartCamera(int capturePosition) override;
    void didConnectToService() override;
    void setSocketConnected(bool connected) override;
    void setCurrentCameraPosition(int capturePosition) override;
    void setServerIsReadyForFrames(bool ready) override;
    void stopFramesAfterSocketFailure() override;

    // State, for the host's robots and tests.
    std::optional<QString> status() const { return status_; }
    bool checkingSelfie() const { return checkingSelfie_; }
    CapturePosition currentCameraPosition() const { return CapturePosition(currentCameraPosition_.load()); }
    bool isSocketConnected() const;
    bool cameraHasStarted() const;
    bool serverIsReadyForFrames() const { return serverIsReadyForFrames_.load(); }
    bool isServiceAvailable() const { return isServiceAvailable_; }
    bool isCaptureSessionRunning() const;
    std::optional<QString> redirectionStepId() const { return redirectionStepId_; }
    int64_t encodedFramesCount() const;
    int64_t sentFramesCount() const;
    double desiredFrameRate() const { return KYCCapture::kDesiredFrameRate; }

    TSRNativeSignallingClient* signallingClient() const { return signallingClient_.get(); }
    // Null until the views are loaded.
    VideoClient* videoClient() const;
    KYCGuidance* guidance() const { return guidance_.get(); }
    TSRCameraPreviewView* videoView() const { return videoView_; }
    LivePicture* livePicture() const { return livePicture_; }
    ActivityIndicator* spinnerView() const { return spinnerView_; }
    BusyButton* continueButton() const { return continueButton_; }
    QNetworkReply* statusRequest() const { return statusRequest_; }

    static constexpr int kRedirectionDelayMs = 100;
    static constexpr int kCameraSwitchDelayMs = 50;
    static constexpr int kFaceCutoutDelayMs = 150;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setupBackingView();
    void setupContinueButton();
    void setupCloseButton();
    void setContinueButtonTitle(const QString& title);
    void layoutViews();

    void setupCapture();
    void stopCapture();
    void applyStatus(const QString& word);
    void runTerminalSequence(const QString& word);
    void prepareForIDCard();
    void prepareForSelfie();
    void endSignalling();

    std::shared_ptr<CaptureSystem> captureSystem_;
    std::shared_ptr<KYCFrameSender> frameSender_;
    std::unique_ptr<TSRNativeSignallingClient> signallingClient_;
    std::unique_ptr<KYCGuidance> guidance_;
    std::unique_ptr<KYCCapture> capture_;       // made with the views
    TSRCameraPreviewView* videoView_ = nullptr; // child of backingView_
    LivePicture* livePicture_ = nullptr;        // child of videoView_
    QWidget* backingView_ = nullptr;            // child
    ActivityIndicator* spinnerView_ = nullptr;  // child of backingView_
    BusyButton* continueButton_ = nullptr;      // child
    QPointer<QNetworkReply> statusRequest_;
    bool viewLoaded_ = false;

    // Written on the socket's thread before the main-thread call of the same message.
    std::atomic<int> currentCameraPosition_{0};
    std::atomic<bool> serverIsReadyForFrames_{false};
    bool isServiceAvailable_ = true;
    bool checkingSelfie_ = false;
    std::optional<QString> redirectionStepId_;
    std::optional<QString> status_;
};

} // namespace tessara
