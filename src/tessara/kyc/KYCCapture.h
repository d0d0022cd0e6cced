#pragma once

#include "tessara/kyc/video/CapturePosition.h"

#include <QPointer>
#include <functional>
#include <memory>

namespace tessara {

class LivePicture;
class VideoCaptureManager;
class VideoClient;

// The camera side of a verification screen: starts and stops the session, switches between the
// cameras, lets frames go to the encoder once both the camera and the service are ready, and
// pauses in the background. The preview shows every session the client makes. Main thread only;
// the hooks are called on it.
class KYCCapture {
public:
    // `context` (the screen) bounds the asynchronous answers; `livePicture` shows the preview.
    KYCCapture(QObject* context, std::unique_ptr<VideoClient> client, LivePicture* livePicture);
    ~KYCCapture();

    // Whether the service takes frames now.
    std::function<bool()> serviceReady;
    // Before every start, with the camera about to run.
    std::function<void(CapturePosition)> starting;
    // The user refused the camera.
    std::function<void()> cameraRefused;

    // Starts the session on `position`; frames follow once the service is ready too. A session
    // that cannot be configured is fatal.
    void start(CapturePosition position);
    // Lets frames go when the camera runs and the service is ready; the other half calls it again.
    void startFramesIfReady();
    void stop();
    // The other camera, in the same session; frames pause until the encoder sees the new size.
    void switchCamera(CapturePosition position);
    // Encoder gone and camera stopped; the session still counts as running, so the way back is
    // taken.
    void enterBackground();
    // A fresh session (the camera may have been taken meanwhile), started on `position` later on
    // the main thread.
    void returnToForeground(CapturePosition position);

    VideoClient& client() const { return *client_; }
    bool cameraHasStarted() const { return cameraHasStarted_; }
    bool isSessionRunning() const { return isSessionRunning_; }
    static constexpr double kDesiredFrameRate = 30.0;

private:
    VideoCaptureManager& captureManager();

    QPointer<QObject> context_;
    std::unique_ptr<VideoClient> client_;
    LivePicture* livePicture_;
    const VideoCaptureManager* previewFedBy_ = nullptr;
    bool cameraHasStarted_ = false;
    bool isSessionRunning_ = false;
};

} // namespace tessara
