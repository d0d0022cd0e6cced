#include "tessara/kyc/TSRNativeKYCController.h"

#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/kyc/CutoutImageView.h"
#include "tessara/kyc/KYCCameraChoice.h"
#include "tessara/kyc/KYCCapture.h"
#include "tessara/kyc/KYCFrameSender.h"
#include "tessara/kyc/KYCGuidance.h"
#include "tessara/kyc/KYCScreenLayout.h"
#include "tessara/kyc/KYCStatusPolling.h"
#include "tessara/kyc/KYCStatusTable.h"
#include "tessara/kyc/LivePicture.h"
#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"
#include "tessara/kyc/signalling/TSRWebSocket.h"
#include "tessara/kyc/video/TSRCameraPreviewView.h"
#include "tessara/kyc/video/VideoClient.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"
#include "tessara/platform/MainThread.h"
#include "tessara/steps/StepSubmission.h"
#include "tessara/ui/ActivityIndicator.h"
#include "tessara/ui/Alert.h"
#include "tessara/ui/BusyButton.h"
#include "tessara/ui/ButtonAppearance.h"
#include "tessara/ui/CloseConfirmation.h"
#include "tessara/ui/CloseGlyphButton.h"

#include <QGuiApplication>
#include <QHideEvent>
#include <QLabel>
#include <QShowEvent>
#include <QTimer>
#include <cstdio>

namespace tessara {

namespace {

const QString kScreenName = QStringLiteral("TSRNativeKYCController");

} // namespace

TSRNativeKYCController::TSRNativeKYCController(const SubmissionJSON& document, TSRDelegate* formDelegate,
                                               std::shared_ptr<CaptureSystem> captureSystem, QWidget* parent)
    : TSRViewController(parent)
    , captureSystem_(std::move(captureSystem))
    , frameSender_(std::make_shared<KYCFrameSender>()) {
    setObjectName(kScreenName);
    // The screen is dark whatever the application is: black around the picture, white text.
    TSRAppearance::setInterfaceStyle(this, InterfaceStyle::dark);
    const std::optional<SubmissionSettings>& settings = document.settings;
    if (!settings || !settings->userHash)
        fatalError(QStringLiteral("The verification step's settings have no userHash."));
    if (!settings->streamUrl)
        fatalError(QStringLiteral("The verification step's settings have no streamUrl."));
    TSRSignallingClient::setUserHash(*settings->userHash);
    signallingClient_ = std::make_unique<TSRNativeSignallingClient>(
        std::make_unique<TSRWebSocket>(TSRNativeSignallingClient::socketUrl(*settings->streamUrl)));
    ui = document;
    setFormDelegate(formDelegate);
    signallingClient_->setDelegate(this);
    frameSender_->attach(signallingClient_->webSocket());

    backingView_ = new QWidget(this);
    backingView_->setObjectName(QStringLiteral("backingView"));
    videoView_ = new TSRCameraPreviewView(backingView_);
    videoView_->setObjectName(QStringLiteral("videoView"));
    livePicture_ = new LivePicture(videoView_);

    guidance_ = std::make_unique<KYCGuidance>(this);
    guidance_->buildStatusMessages(document.fields);
    guidance_->textChanged = [this] { layoutViews(); };
    if (!captureSystem_)
        captureSystem_ = KYCCameraChoice::fromHostHooks();
}

TSRNativeKYCController::~TSRNativeKYCController() {
    // The socket's thread and the encoder's thread call into this screen: both are cut off first.
    frameSender_->detach();
    signallingClient_->setDelegate(nullptr);
    signallingClient_.reset();
    capture_.reset();
}

void TSRNativeKYCController::setVisible(bool visible) {
    if (visible)
        loadViewIfNeeded();
    TSRViewController::setVisible(visible);
}

void TSRNativeKYCController::loadViewIfNeeded() {
    if (viewLoaded_)
        return;
    viewLoaded_ = true;
    const TSRAppearance::StyleScope style(TSRAppearance::interfaceStyle(this));
    setAutoFillBackground(true);
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);

    setupBackingView();
    guidance_->setupInstructions();
    setupContinueButton();
    if (currentAppearance().showCloseButton())
        setupCloseButton();
    guidance_->setupCutoutImageView(KYCGuidance::Cutout::idCard);
    guidance_->setupCutoutImageView(KYCGuidance::Cutout::face);
    guidance_->setupProgressView();
    guidance_->setupRectangleContainer();
    guidance_->setupWhiteWebView();
    layoutViews();

    setupCapture();
    signallingClient_->webSocket()->connect();
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        switch (state) {
        case Qt::ApplicationActive:
            handleAppState(AppEvent::didBecomeActive);
            break;
        case Qt::ApplicationInactive:
            handleAppState(AppEvent::willResignActive);
            break;
        default:
            handleAppState(AppEvent::didEnterBackground);
            break;
        }
    });
}

void TSRNativeKYCController::setupBackingView() {
    spinnerView_ = new ActivityIndicator(ActivityIndicator::Style::large, backingView_);
    spinnerView_->setObjectName(QStringLiteral("spinnerView"));
    spinnerView_->setColor(currentAppearance().tintColor());
    spinnerView_->setHidesWhenStopped(true);
    spinnerView_->startAnimating();
    videoView_->setAutoFillBackground(true);
    QPalette black = videoView_->palette();
    black.setColor(QPalette::Window, Qt::black);
    videoView_->setPalette(black);
    spinnerView_->raise();
}

void TSRNativeKYCController::setupContinueButton() {
    continueButton_ = new BusyButton(this);
    continueButton_->setObjectName(kScreenName + QStringLiteral(".continueButton"));
    ButtonAppearance::apply(continueButton_);
    continueButton_->hide();
    connect(continueButton_, &QPushButton::clicked, this, &TSRNativeKYCController::followRedirection);
}

void TSRNativeKYCController::setContinueButtonTitle(const QString& title) {
    continueButton_->setFont(currentAppearance().buttonFont());
    continueButton_->setText(title);
}

void TSRNativeKYCController::setupCloseButton() {
    auto* close = new CloseGlyphButton; // owned by this screen through setRightBarItem
    close->setObjectName(kScreenName + QStringLiteral(".closeButton"));
    connect(close, &QAbstractButton::clicked, this, &TSRNativeKYCController::confirmClose);
    setRightBarItem(close);
}

void TSRNativeKYCController::layoutViews() {
    if (!viewLoaded_)
        return;
    TSRAppearance& theme = currentAppearance();
    KYCScreenLayout::Input input;
    input.screen = size();
    input.leadingSpace = theme.leadingSpace();
    input.bubble = guidance_->bubble() != nullptr;
    input.bubbleCornerRadius = theme.bubbleCornerRadius();
    guidance_->fitText(KYCScreenLayout::labelMaxWidth(input));
    input.labelNaturalWidth = guidance_->labelNaturalWidth();
    input.labelHeight = [this](int width) { return guidance_->labelHeight(width); };
    input.buttonHeight = ButtonAppearance::heightFor(theme.buttonSize());
    input.buttonMinimumHeight = theme.buttonMinimumHeight();
    const KYCScreenLayout::Frames frames = KYCScreenLayout::compute(input);

    backingView_->setGeometry(frames.backing);
    videoView_->setGeometry(QRect(QPoint(0, 0), frames.backing.size()));
    livePicture_->setGeometry(videoView_->rect());
    const QSize spinner = spinnerView_->sizeHint();
    spinnerView_->setGeometry(QRect(QPoint((frames.backing.width() - spinner.width()) / 2,
                                           (frames.backing.height() - spinner.height()) / 2),
                                    spinner));
    continueButton_->setGeometry(frames.button);
    guidance_->layout(frames);
}

void TSRNativeKYCController::resizeEvent(QResizeEvent* event) {
    TSRViewController::resizeEvent(event);
    layoutViews();
}

void TSRNativeKYCController::showEvent(QShowEvent* event) {
    TSRViewController::showEvent(event);
    if (event->spontaneous())
        return;
    if (TSRNavigationViewController* navigation = navigationController())
        navigation->setOverrideUserInterfaceStyle(TSRNavigationViewController::InterfaceStyle::dark);
    HostHooks::instance().disableIdleTimer(true);
}

void TSRNativeKYCController::hideEvent(QHideEvent* event) {
    TSRViewController::hideEvent(event);
    if (!event->spontaneous())
        HostHooks::instance().disableIdleTimer(false);
}

bool TSRNativeKYCController::isSocketConnected() const {
    return frameSender_->socketConnected.load();
}

bool TSRNativeKYCController::cameraHasStarted() const {
    return capture_ && capture_->cameraHasStarted();
}

bool TSRNativeKYCController::isCaptureSessionRunning() const {
    return capture_ && capture_->isSessionRunning();
}

VideoClient* TSRNativeKYCController::videoClient() const {
    return capture_ ? &capture_->client() : nullptr;
}

int64_t TSRNativeKYCController::encodedFramesCount() const {
    return frameSender_->encodedFramesCount();
}

int64_t TSRNativeKYCController::sentFramesCount() const {
    return frameSender_->sentCount();
}

// ---- signalling

void TSRNativeKYCController::setSocketConnected(bool connected) {
    frameSender_->socketConnected.store(connected);
}

void TSRNativeKYCController::setCurrentCameraPosition(int capturePosition) {
    currentCameraPosition_.store(capturePosition);
}

void TSRNativeKYCController::setServerIsReadyForFrames(bool ready) {
    serverIsReadyForFrames_.store(ready);
}

void TSRNativeKYCController::stopFramesAfterSocketFailure() {
    // The video client belongs to the main thread; until the hop, the cleared socket flag already
    // keeps units off the link.
    runOnMain(this, [this] {
        if (!capture_)
            return;
        VideoClient& client = capture_->client();
        client.compressionIsRunning = true;
        if (client.hasCaptureManager())
            client.captureManager().videoOutput().setSampleBufferDelegate(nullptr, nullptr);
    });
}

void TSRNativeKYCController::didReceiveOverlayRectangle(const OverlayRectangle& rectangle) {
    guidance_->setFingerFrameRectangle(rectangle);
}

void TSRNativeKYCController::didRemoveOverlayRectangle(const RemoveRectangle&) {
    guidance_->setFingerFrameRectangle(std::nullopt);
}

void TSRNativeKYCController::didReceiveTrackingCoordinates(double x, double y) {
    guidance_->track(x, y);
}

void TSRNativeKYCController::didReceiveOCRAction(OCRAction action) {
    if (action == OCRAction::start)
        guidance_->updateProgress(0.0f, 1.0f);
    else
        guidance_->stopProgress();
}

void TSRNativeKYCController::didReceiveOCRProgress(float current, float max) {
    guidance_->updateProgress(current, max);
}

void TSRNativeKYCController::didReceiveQuality(const QString& msg) {
    guidance_->applyQuality(msg, checkingSelfie_);
}

void TSRNativeKYCController::didReceiveStatus(const QString& type) {
    applyStatus(type);
}

void TSRNativeKYCController::didReceiveStartCamera(int capturePosition) {
    capture_->start(CapturePosition(capturePosition));
}

void TSRNativeKYCController::didConnectToService() {
    if (capture_)
        capture_->startFramesIfReady();
}

void TSRNativeKYCController::getKYCStatus() {
    statusRequest_ = KYCStatusPolling::request(*ui, this, [this](const QString& code) { applyStatus(code); });
}

// ---- capture

void TSRNativeKYCController::stopCapture() {
    if (capture_)
        capture_->stop();
}

void TSRNativeKYCController::setupCapture() {
    capture_ = std::make_unique<KYCCapture>(
        this,
        std::make_unique<VideoClient>(
            videoView_, [sender = frameSender_](QByteArray unit) { sender->send(std::move(unit)); },
            captureSystem_),
        livePicture_);
    capture_->serviceReady = [this] { return serverIsReadyForFrames_.load(); };
    capture_->starting = [this](CapturePosition position) {
        if (position != CapturePosition::front)
            return;
        checkingSelfie_ = true;
        currentCameraPosition_.store(int(CapturePosition::front));
        guidance_->showCutout(KYCGuidance::Cutout::face);
    };
    capture_->cameraRefused = [this] {
        guidance_->setInstructionsText(
            QStringLiteral("Трябва да разрешите достъп до камерата. Можете да го направите в Настройки."));
        continueButton_->show();
        setContinueButtonTitle(QStringLiteral("Настройки"));
    };
}

// ---- status

void TSRNativeKYCController::applyStatus(const QString& word) {
    if (status_ == word)
        return;
    HostHooks::instance().fireHaptic();
    status_ = word;
    switch (KYCStatusTable::effectOf(word)) {
    case KYCStatusTable::Effect::terminal:
        runTerminalSequence(word);
        if (KYCStatusTable::waitsForButton(word))
            return;
        break;
    case KYCStatusTable::Effect::noEffect:
        break;
    case KYCStatusTable::Effect::idCard:
        spinnerView_->stopAnimating();
        prepareForIDCard();
        break;
    case KYCStatusTable::Effect::selfie:
        prepareForSelfie();
        break;
    case KYCStatusTable::Effect::stopMedia:
        guidance_->hideGuidance();
        checkingSelfie_ = false;
        currentCameraPosition_.store(int(CapturePosition::back));
        stopCapture();
        videoView_->hide();
        spinnerView_->startAnimating();
        break;
    case KYCStatusTable::Effect::noService:
        isServiceAvailable_ = false;
        break;
    case KYCStatusTable::Effect::other:
        guidance_->hideCutout(KYCGuidance::Cutout::idCard);
        break;
    }
    guidance_->showMessage(word);
}

void TSRNativeKYCController::runTerminalSequence(const QString& word) {
    guidance_->hideGuidance();
    spinnerView_->stopAnimating();
    checkingSelfie_ = false;
    currentCameraPosition_.store(int(CapturePosition::back));
    continueButton_->show();
    stopCapture();
    endSignalling();
    if (KYCStatusTable::waitsForButton(word)) {
        guidance_->setInstructionsText(guidance_->statusMessages().value(word));
        redirectionStepId_ = ui->settings ? ui->settings->failedNoVideoStream : std::nullopt;
        return;
    }
    redirectionStepId_ = ui->directionId;
    runOnMainAfter(kRedirectionDelayMs, this, [this] { followRedirection(); });
}

void TSRNativeKYCController::endSignalling() {
    frameSender_->detach();
    signallingClient_->sendByeAndDisconnect();
}

void TSRNativeKYCController::prepareForIDCard() {
    guidance_->hideCutout(KYCGuidance::Cutout::face);
    guidance_->hideCutout(KYCGuidance::Cutout::idCard);
    if (checkingSelfie_) {
        livePicture_->flip(LivePicture::FlipDirection::fromLeft);
        runOnMainAfter(kCameraSwitchDelayMs, this, [this] { capture_->switchCamera(CapturePosition::back); });
    }
    checkingSelfie_ = false;
    currentCameraPosition_.store(int(CapturePosition::back));
    guidance_->showCutout(KYCGuidance::Cutout::idCard);
}

void TSRNativeKYCController::prepareForSelfie() {
    guidance_->hideCutout(KYCGuidance::Cutout::idCard);
    if (!checkingSelfie_) {
        livePicture_->flip(LivePicture::FlipDirection::fromRight);
        runOnMainAfter(kCameraSwitchDelayMs, this,
                       [this] { capture_->switchCamera(CapturePosition::front); });
        runOnMainAfter(kFaceCutoutDelayMs, this,
                       [this] { guidance_->showCutout(KYCGuidance::Cutout::face); });
    }
    checkingSelfie_ = true;
    currentCameraPosition_.store(int(CapturePosition::front));
}

// ---- leaving

void TSRNativeKYCController::followRedirection() {
    if (capture_ && capture_->client().sessionSetupResult == SessionSetupResult::notAuthorized) {
        HostHooks::instance().open(HostHooks::instance().settingsUrl);
        return;
    }
    continueButton_->setShowsActivityIndicator(true);
    continueButton_->setEnabled(false);
    std::optional<QString> target = redirectionStepId_;
    if (!isServiceAvailable_)
        target = ui->settings ? ui->settings->noServiceDirectionStepId : std::nullopt;
    // Without a target nothing leads out: the button stays busy, as the service left it.
    if (!target || target->isEmpty())
        return;

    SubmitStepDTO dto;
    dto.submissionId = ui->submissionId.value_or(QString());
    dto.directionId = *target;
    dto.fromDirectionId = ui->directionId;
    StepSubmission::send(*this, dto, [this](const std::optional<TSRError>& failure) {
        if (!failure)
            return;
        std::printf("%s\n", qUtf8Printable(errorDescription(*failure)));
        std::fflush(stdout);
        continueButton_->setShowsActivityIndicator(false);
        continueButton_->setEnabled(true);
    });
}

void TSRNativeKYCController::confirmClose() {
    showCloseConfirmation(this, QStringLiteral("Сигурни ли сте, че искате да затворите екрана?"),
                          [this] { closeStep(); });
}

void TSRNativeKYCController::closeStep() {
    stopCapture();
    endSignalling();
    if (!ui || !ui->directionId)
        fatalError(QStringLiteral("The closed verification step has no directionId to report."));
    dismissAndReportClose();
}

void TSRNativeKYCController::handleAppState(AppEvent event) {
    if (!isSocketConnected() || !isCaptureSessionRunning())
        return;
    if (event == AppEvent::didEnterBackground)
        capture_->enterBackground();
    else if (event == AppEvent::didBecomeActive)
        capture_->returnToForeground(currentCameraPosition());
}

} // namespace tessara
