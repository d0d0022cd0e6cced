#pragma once

#include "tessara/kyc/video/CapturePosition.h"
#include "tessara/kyc/video/CaptureSession.h"
#include "tessara/kyc/video/CaptureSystem.h"
#include "tessara/kyc/video/SerialQueue.h"
#include "tessara/kyc/video/SessionSetupResult.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"
#include "tessara/kyc/video/VideoDataOutput.h"
#include "tessara/kyc/video/VideoDimensions.h"

#include <QPointer>
#include <QString>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>

namespace tessara {

// Owns the capture session: decides permission, camera, format, frame rate and zoom, and turns the
// output portrait. Making one starts its permission check and configuration on the session queue.
// Whenever a camera is configured with a known size, the dimensions notification goes out on the
// main thread with "videoDimensions" (VideoDimensions) and "cameraPosition" (int).
class VideoCaptureManager {
public:
    enum class ConfigurationError { cannotAddInput, cannotAddOutput, defaultDeviceNotExist };

    class Error : public std::runtime_error {
    public:
        explicit Error(ConfigurationError code);
        ConfigurationError code;
    };

    VideoCaptureManager(std::shared_ptr<CaptureSystem> system, TSRCameraPreviewView* previewView,
                        CapturePosition initialCameraPosition, double desiredFrameRate);
    // Waits for the session queue (a pending permission question included), then stops the camera.
    ~VideoCaptureManager();
    VideoCaptureManager(const VideoCaptureManager&) = delete;
    VideoCaptureManager& operator=(const VideoCaptureManager&) = delete;

    // On the session queue: runs the session when set up, otherwise prints why; then `completion`
    // with the result, on the session queue.
    void startRunning(std::function<void(SessionSetupResult)> completion);
    // On the session queue: stops the camera.
    void stop();
    // Replaces the camera (queued on the session queue, where all session work runs); the session
    // keeps running. Detach the sample delegate before calling.
    void changeCamera(CapturePosition position, double frameRate);

    VideoDataOutput& videoOutput() { return *videoOutput_; }
    SerialQueue& sessionQueue() { return *sessionQueue_; }
    SerialQueue& videoOutputQueue() { return *videoOutputQueue_; }

    // Results of configuration; read them from the session queue (or after a `sync` on it).
    SessionSetupResult setupResult() const { return setupResult_.load(); }
    std::optional<VideoDimensions> configuredVideoDimensions() const { return configuredVideoDimensions_; }
    CaptureSession& session() { return *session_; }

    // Sizes wanted per position, in the sensor's orientation.
    static const std::map<CapturePosition, VideoDimensions>& desiredDimensions();
    // Bundle identifier + ".didChangeVideoCaptureDimensions".
    static QString dimensionsNotificationName();

private:
    void checkAuthorization();
    void configureSession();
    void configureInput(CapturePosition position, double frameRate);
    void selectFormat(CaptureDevice& device, CapturePosition position);
    void configureFrameRate(CaptureDevice& device, double frameRate);
    void configureZoom(CaptureDevice& device);
    void configureOutput();
    void rotateConnection();
    [[noreturn]] void failConfiguration(ConfigurationError error);

    std::shared_ptr<CaptureSystem> system_;
    std::unique_ptr<VideoDataOutput> videoOutput_;
    std::unique_ptr<CaptureSession> session_;
    std::unique_ptr<SerialQueue> videoOutputQueue_;
    std::unique_ptr<SerialQueue> sessionQueue_;
    QPointer<TSRCameraPreviewView> previewView_;
    CapturePosition initialCameraPosition_;
    double desiredFrameRate_;
    std::optional<VideoDimensions> configuredVideoDimensions_;
    // Written by the permission answer on the system's thread, read on the session queue.
    std::atomic<SessionSetupResult> setupResult_{SessionSetupResult::success};
};

QString toString(VideoCaptureManager::ConfigurationError error);

} // namespace tessara
