#include "tessara/kyc/video/VideoCaptureManager.h"

#include "tessara/platform/FatalError.h"
#include "tessara/platform/Logging.h"
#include "tessara/platform/MainThread.h"
#include "tessara/platform/NotificationBus.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace tessara {

namespace {

void printLine(const char* text) {
    std::fputs(text, stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

// The 4:3 test compares 32-bit floats with a relative tolerance, as the camera formats report
// their sizes; a 1920x1440 format passes, 1920x1080 does not.
bool isFourByThree(int32_t width, int32_t height) {
    const float ratio = float(width) / float(height);
    const float wanted = 1.3333334f;
    return std::fabs(ratio - wanted) <= 0.00034526698f * std::max(std::fabs(ratio), std::fabs(wanted));
}

struct DeviceLock {
    explicit DeviceLock(CaptureDevice& device)
        : device(device) {
        if (!device.lockForConfiguration())
            throw std::runtime_error("the camera could not be locked for configuration");
    }
    ~DeviceLock() { device.unlockForConfiguration(); }
    CaptureDevice& device;
};

} // namespace

QString toString(VideoCaptureManager::ConfigurationError error) {
    switch (error) {
    case VideoCaptureManager::ConfigurationError::cannotAddInput:
        return QStringLiteral("cannotAddInput");
    case VideoCaptureManager::ConfigurationError::cannotAddOutput:
        return QStringLiteral("cannotAddOutput");
    case VideoCaptureManager::ConfigurationError::defaultDeviceNotExist:
        return QStringLiteral("defaultDeviceNotExist");
    }
    return {};
}

VideoCaptureManager::Error::Error(ConfigurationError error)
    : std::runtime_error(toString(error).toStdString())
    , code(error) {}

const std::map<CapturePosition, VideoDimensions>& VideoCaptureManager::desiredDimensions() {
    static const std::map<CapturePosition, VideoDimensions> table{
        {CapturePosition::back, {1920, 1440}},
        {CapturePosition::front, {1920, 1440}},
    };
    return table;
}

QString VideoCaptureManager::dimensionsNotificationName() {
    return NotificationBus::frameworkName(QStringLiteral(".didChangeVideoCaptureDimensions"));
}

VideoCaptureManager::VideoCaptureManager(std::shared_ptr<CaptureSystem> system,
                                         TSRCameraPreviewView* previewView,
                                         CapturePosition initialCameraPosition, double desiredFrameRate)
    : system_(std::move(system))
    , videoOutput_(std::make_unique<VideoDataOutput>())
    , session_(std::make_unique<CaptureSession>())
    , videoOutputQueue_(std::make_unique<SerialQueue>(QString::fromLatin1(kFrameworkBundleIdentifier) +
                                                      QStringLiteral("video.output.queue")))
    , sessionQueue_(std::make_unique<SerialQueue>(QString::fromLatin1(kFrameworkBundleIdentifier) +
                                                  QStringLiteral(".session.queue")))
    , previewView_(previewView)
    , initialCameraPosition_(initialCameraPosition)
    , desiredFrameRate_(desiredFrameRate) {
    sessionQueue_->async([this] { checkAuthorization(); });
    sessionQueue_->async([this] { configureSession(); });
}

VideoCaptureManager::~VideoCaptureManager() {
    // The session queue goes first (it finishes what it holds), then the camera stops, and only then
    // the output queue, so no frame is left in flight towards a destroyed delegate queue.
    sessionQueue_.reset();
    session_.reset();
    videoOutputQueue_.reset();
}

void VideoCaptureManager::startRunning(std::function<void(SessionSetupResult)> completion) {
    sessionQueue_->async([this, completion = std::move(completion)] {
        const SessionSetupResult result = setupResult_.load();
        if (result == SessionSetupResult::success)
            session_->startRunning();
        else if (result == SessionSetupResult::notAuthorized)
            printLine("camera usage not authorized");
        else
            printLine("configuration failed");
        if (completion)
            completion(result);
    });
}

void VideoCaptureManager::stop() {
    sessionQueue_->async([this] { session_->stopRunning(); });
}

void VideoCaptureManager::checkAuthorization() {
    switch (system_->authorizationStatus()) {
    case AuthorizationStatus::authorized:
        break;
    case AuthorizationStatus::notDetermined:
        // Configuration waits on the queue until the user has answered.
        sessionQueue_->suspend();
        system_->requestAccess([this](bool granted) {
            if (!granted)
                setupResult_ = SessionSetupResult::notAuthorized;
            sessionQueue_->resume();
        });
        break;
    default:
        setupResult_ = SessionSetupResult::notAuthorized;
        break;
    }
}

void VideoCaptureManager::configureSession() {
    if (setupResult_.load() != SessionSetupResult::success)
        return;
    session_->beginConfiguration();
    if (previewView_) {
        CaptureSession* session = session_.get();
        runOnMain(previewView_, [preview = previewView_, session] {
            if (preview)
                preview->setSession(session);
        });
    }
    if (session_->canSetSessionPreset(CaptureSession::Preset::inputPriority))
        session_->setSessionPreset(CaptureSession::Preset::inputPriority);
    try {
        configureInput(initialCameraPosition_, desiredFrameRate_);
        configureOutput();
    } catch (const std::exception& error) {
        qCCritical(lcVideoCapture, "session configuration error : %s", error.what());
        return;
    }
    session_->commitConfiguration();
}

void VideoCaptureManager::failConfiguration(ConfigurationError error) {
    setupResult_ = SessionSetupResult::configurationFailed;
    session_->commitConfiguration();
    throw Error(error);
}

void VideoCaptureManager::configureInput(CapturePosition position, double frameRate) {
    std::unique_ptr<CaptureDevice> device = system_->defaultDevice(position);
    if (!device) {
        qCCritical(lcVideoCapture, "Default video device is unavailable.");
        failConfiguration(ConfigurationError::defaultDeviceNotExist);
    }
    selectFormat(*device, position);
    if (!session_->canAddInput(*device))
        failConfiguration(ConfigurationError::cannotAddInput);
    CaptureDevice& input = *device;
    session_->addInput(std::move(device));
    try {
        configureFrameRate(input, frameRate);
        if (position == CapturePosition::back)
            configureZoom(input);
    } catch (...) {
        setupResult_ = SessionSetupResult::configurationFailed;
        session_->commitConfiguration();
        throw;
    }
    if (configuredVideoDimensions_) {
        const QVariantMap userInfo{
            {QStringLiteral("videoDimensions"), QVariant::fromValue(*configuredVideoDimensions_)},
            {QStringLiteral("cameraPosition"), int(position)}};
        // The bus belongs to the main thread, so the notification is posted there.
        runOnMain([userInfo] { NotificationBus::instance().post(dimensionsNotificationName(), userInfo); });
    }
}

void VideoCaptureManager::selectFormat(CaptureDevice& device, CapturePosition position) {
    const auto wanted = desiredDimensions().find(position);
    if (wanted == desiredDimensions().end())
        fatalError(QStringLiteral("No desired video dimensions for camera position %1").arg(int(position)));
    const VideoDimensions desired = wanted->second;

    // At most the desired width and at least the desired height: the mix is deliberate.
    std::vector<CaptureFormat> candidates;
    for (const CaptureFormat& format : device.formats())
        if (format.mediaSubtype == CaptureFormat::kNV12VideoRange && format.width <= desired.width &&
            format.height >= desired.height)
            candidates.push_back(format);
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const CaptureFormat& a, const CaptureFormat& b) { return a.width < b.width; });
    const auto chosen = std::find_if(candidates.rbegin(), candidates.rend(), [](const CaptureFormat& format) {
        return isFourByThree(format.width, format.height);
    });
    if (chosen == candidates.rend())
        return;

    DeviceLock lock(device);
    if (position == CapturePosition::back || position == CapturePosition::front)
        // The output turns the picture portrait, and the encoder keeps a 4:3 band of it.
        configuredVideoDimensions_ = VideoDimensions{chosen->height, (chosen->height / 4) * 3};
    else
        configuredVideoDimensions_ = VideoDimensions{chosen->width, chosen->height};
    device.setActiveFormat(*chosen);
}

void VideoCaptureManager::configureFrameRate(CaptureDevice& device, double frameRate) {
    const std::vector<FrameRateRange> ranges = device.activeFormat().videoSupportedFrameRateRanges;
    if (ranges.empty())
        return;
    const FrameRateRange& range = ranges.front();
    if (frameRate < range.minFrameRate || frameRate > range.maxFrameRate)
        return;
    DeviceLock lock(device);
    const FrameDuration duration{1, int32_t(frameRate)};
    device.setActiveVideoMinFrameDuration(duration);
    device.setActiveVideoMaxFrameDuration(duration);
}

void VideoCaptureManager::configureZoom(CaptureDevice& device) {
    const double fov = device.activeFormat().videoFieldOfView;
    const int focus = device.minimumFocusDistance();
    // The size in millimetres the document should fill at the nearest sharp distance.
    const double size = focus >= 121 && focus <= 150 ? 80.0 : focus >= 151 && focus <= 200 ? 70.0 : 85.0;
    const double distance = size / 0.9 / std::tan(fov * 0.5 * std::numbers::pi / 180.0);
    if (focus == -1 || !(focus > distance))
        return;
    DeviceLock lock(device);
    device.setVideoZoomFactor(focus / distance);
}

void VideoCaptureManager::configureOutput() {
    if (!session_->canAddOutput(*videoOutput_))
        failConfiguration(ConfigurationError::cannotAddOutput);
    session_->addOutput(videoOutput_.get());
    rotateConnection();
}

void VideoCaptureManager::rotateConnection() {
    if (VideoDataOutput* connection = session_->connectionWithMediaTypeVideo())
        connection->setVideoRotationAngle(90);
}

void VideoCaptureManager::changeCamera(CapturePosition position, double frameRate) {
    sessionQueue_->async([this, position, frameRate] {
        // The new camera starts streaming once it is fully configured, not halfway.
        session_->beginConfiguration();
        const auto& inputs = session_->inputs();
        if (!inputs.empty())
            session_->removeInput(inputs.front().get());
        try {
            configureInput(position, frameRate);
        } catch (const std::exception&) {
            return; // the failing step has committed
        }
        rotateConnection();
        session_->commitConfiguration();
    });
}

} // namespace tessara
