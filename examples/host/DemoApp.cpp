#include "host/DemoApp.h"

#include "backend/BackendServer.h"
#include "host/Autopilot.h"
#include "host/BankHomeScreen.h"
#include "host/BrandPalette.h"
#include "host/CallbackLogPanel.h"
#include "host/DemoLog.h"
#include "host/DemoWindow.h"
#include "host/StepScreen.h"
#include "host/SubmissionSummary.h"
#include "tessara/api/Tessara.h"

#include <QCameraDevice>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QMediaDevices>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cstdio>

// Resources of a static library are registered by hand; this must sit outside any namespace.
static void initDemoResources() {
    Q_INIT_RESOURCE(demo);
}

namespace tessara::demo {

namespace {

// Time for the window to be laid out before the first picture and the first click.
constexpr int kFirstClickDelayMs = 250;
// The SDK's screens fade out when closed; the last picture waits for that.
constexpr int kFinalPictureDelayMs = 350;

QString firstPdfUnder(const QString& directory) {
    if (directory.isEmpty())
        return {};
    QDirIterator it(directory, {QStringLiteral("*.pdf")}, QDir::Files, QDirIterator::Subdirectories);
    return it.hasNext() ? it.next() : QString();
}

// A new SDK theme in the bank's colours.
std::shared_ptr<TSRAppearance> brandTheme() {
    auto theme = std::make_shared<TSRAppearance>();
    theme->setTintColor(BrandPalette::primary());
    theme->setBackgroundColor(BrandPalette::background());
    theme->setTextColor(BrandPalette::text());
    theme->setFont(BrandPalette::font(10.5));
    theme->setNavigationTitleFont(BrandPalette::font(12, QFont::DemiBold));
    theme->setButtonFont(BrandPalette::font(11, QFont::DemiBold));
    theme->setButtonMinimumHeight(50);
    theme->setInputBorderStyle(TSRAppearance::InputBorderStyle::none);
    theme->setInputBorderWidth(1);
    theme->setInputBackgroundColor(BrandPalette::surface());
    theme->setInputCornerRadius(12);
    theme->setConsentLinkButtonFont(BrandPalette::font(10, QFont::DemiBold));
    return theme;
}

} // namespace

DemoApp::DemoApp(DemoOptions options, QObject* parent)
    : QObject(parent)
    , options_(std::move(options))
    , log_(std::make_unique<DemoLog>()) {
    initDemoResources();
}

DemoApp::~DemoApp() {
    // The window holds the SDK's screens, which may still talk to the backend: it goes first.
    window_.reset();
    tessara_.reset();
}

Autopilot* DemoApp::autopilot() const {
    return autopilot_;
}

bool DemoApp::startBackend() {
    if (options_.backendUrl) {
        backendUrl_ = *options_.backendUrl;
        log_->line(QStringLiteral("backend: %1").arg(backendUrl_.toString()));
        return true;
    }
    backend_ = std::make_unique<BackendServer>();
    const QStringList problems = backend_->loadProcesses(options_.processesDir);
    if (!problems.isEmpty()) {
        log_->line(QStringLiteral("the embedded backend cannot load %1:").arg(options_.processesDir));
        for (const QString& problem : problems)
            log_->line(QStringLiteral("  ") + problem);
        return false;
    }
    if (backend_->listen(0) == 0) {
        log_->line(QStringLiteral("the embedded backend cannot listen on a loopback port"));
        return false;
    }
    backend_->setRequestLogger([this](const QString& line) {
        log_->line(QStringLiteral("  backend: ") + line);
        if (autopilot_)
            autopilot_->backendActivity();
    });
    backendUrl_ = backend_->baseUrl();
    log_->line(
        QStringLiteral("embedded backend: %1 serving %2").arg(backendUrl_.toString(), options_.processesDir));
    return true;
}

bool DemoApp::start() {
    if (!startBackend()) {
        finishRun(1);
        return false;
    }
    // A Bulgarian bank app: dates and numbers in the SDK's controls follow the app's locale.
    QLocale::setDefault(QLocale(QLocale::Bulgarian, QLocale::Bulgaria));
    tessara_ = std::make_unique<Tessara>(backendUrl_, brandTheme());
    const QString platform = QGuiApplication::platformName();
    const bool display = platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
    // Without a display the camera list is not asked for: it would wake the media backend for nothing.
    const QString camera = options_.camera.value_or(
        DemoOptions::defaultCamera(display, display && !QMediaDevices::videoInputs().isEmpty()));
    Tessara::setCamera(camera);
    log_->line(QStringLiteral("camera: %1").arg(camera));

    window_ = std::make_unique<DemoWindow>();
    connect(log_.get(), &DemoLog::lineAdded, window_->logPanel(), &CallbackLogPanel::append);
    for (const QString& line : log_->lines())
        window_->logPanel()->append(line);
    BankHomeScreen* home = window_->homeScreen();
    connect(home, &BankHomeScreen::startRequested, this, &DemoApp::startFlow);
    connect(home, &BankHomeScreen::closedOnStep, this, &DemoApp::onClosed);
    window_->show();
    if (options_.autopilot)
        startAutopilot();
    return true;
}

QString DemoApp::findAnswersFile() const {
    if (!options_.answersFile.isEmpty())
        return options_.answersFile;
    // The sample answers live next to the process they answer.
    if (backend_) {
        if (const ProcessDefinition* process = backend_->processes().process(options_.processId)) {
            const QString candidate = QDir(process->directory).filePath(QStringLiteral("answers.json"));
            if (QFile::exists(candidate))
                return candidate;
        }
    }
    QDirIterator it(options_.processesDir, {QStringLiteral("process.json")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString processFile = it.next();
        QFile file(processFile);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QJsonObject process = QJsonDocument::fromJson(file.readAll()).object();
        const QString candidate = QFileInfo(processFile).dir().filePath(QStringLiteral("answers.json"));
        if (process.value(QLatin1String("processId")).toString() == options_.processId &&
            QFile::exists(candidate))
            return candidate;
    }
    return {};
}

std::optional<QString> DemoApp::stepType(const QString& directionId) const {
    if (!backend_)
        return std::nullopt;
    // The started process first: two processes may use the same direction id.
    if (const ProcessDefinition* process = backend_->processes().process(options_.processId)) {
        if (const StepDefinition* step = process->step(directionId))
            return step->document.type;
    }
    for (const ProcessDefinition* process : backend_->processes().processes()) {
        if (const StepDefinition* step = process->step(directionId))
            return step->document.type;
    }
    return std::nullopt;
}

void DemoApp::startAutopilot() {
    Autopilot::Config config;
    const QString answersFile = findAnswersFile();
    if (!answersFile.isEmpty()) {
        QString error;
        std::optional<AnswerBook> book = AnswerBook::load(answersFile, &error);
        if (!book) {
            log_->line(QStringLiteral("autopilot: ") + error);
            finishRun(1);
            return;
        }
        config.answers = std::move(*book);
        log_->line(
            QStringLiteral("autopilot: %1 answers from %2").arg(config.answers.size()).arg(answersFile));
    } else {
        log_->line(QStringLiteral("autopilot: no answers file, every control gets a default"));
    }
    QString pdf = firstPdfUnder(config.answers.baseDir());
    if (pdf.isEmpty())
        pdf = firstPdfUnder(options_.processesDir);
    config.answers.setDefaultUploadFile(pdf);
    config.screenshotsDir = options_.screenshotsDir;
    config.timeoutSeconds = options_.timeoutSeconds;
    config.untilDirectionId = options_.untilDirectionId;
    if (backend_) {
        config.stepTypeLookup = [this](const QString& directionId) { return stepType(directionId); };
        config.lastAnsweredStep = [this](const QString& submissionId) -> std::optional<QString> {
            const SubmissionRecord* record = backend_->submissions().find(submissionId);
            if (!record || record->visitedSteps.empty())
                return std::nullopt;
            return record->visitedSteps.back();
        };
    }

    autopilot_ = new Autopilot(window_->homeScreen(), std::move(config), *log_, this);
    connect(autopilot_, &Autopilot::finished, this, &DemoApp::onAutopilotFinished);
    autopilot_->start();
    QTimer::singleShot(kFirstClickDelayMs, this, [this] {
        if (!autopilot_ || autopilot_->isFinished())
            return;
        autopilot_->screenshots().captureWidget(window_->homeScreen(), QStringLiteral("home"));
        // Started the way a user starts it.
        QTest::mouseClick(window_->homeScreen()->startButton(), Qt::LeftButton);
    });
}

void DemoApp::startFlow() {
    window_->homeScreen()->setBusy(true);
    BankHomeScreen* home = window_->homeScreen();
    // The SDK always reports how the call went, even after the host is gone (a test that ends
    // early); the answer is then dropped.
    auto completion = [self = QPointer<DemoApp>(this)](const char* name) {
        return [self, name](TSRResult<bool> result) {
            if (!self)
                return;
            if (result.isSuccess()) {
                self->log_->line(QStringLiteral("%1: success").arg(QLatin1String(name)));
                self->onStarted(true, {});
            } else {
                const QString words = errorDescription(result.error());
                self->log_->line(QStringLiteral("%1: failure: %2").arg(QLatin1String(name), words));
                self->onStarted(false, words);
            }
        };
    };
    if (options_.openDirectionId) {
        log_->line(QStringLiteral("openStep: %1").arg(*options_.openDirectionId));
        tessara_->openStep(*options_.openDirectionId, home, completion("didOpenStep"));
    } else {
        log_->line(
            QStringLiteral("startProcess: %1%2")
                .arg(options_.processId, options_.token ? QStringLiteral(" (with token)") : QString()));
        tessara_->startProcess(options_.processId, options_.token, home, completion("didStartProcess"));
    }
}

void DemoApp::onStarted(bool success, const QString& error) {
    if (autopilot_) {
        autopilot_->hostReportedStart(success, error);
        return;
    }
    if (success)
        return;
    // The SDK leaves its loader on screen after a failed start; the host takes it away.
    tessara_->dismissRoot();
    window_->homeScreen()->setBusy(false);
    auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Кандидатстването не започна"), error,
                                QMessageBox::Ok, window_.get());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void DemoApp::onClosed(const QString& directionId) {
    log_->line(QStringLiteral("closedFormOnStepWithId: %1").arg(directionId));
    window_->homeScreen()->setBusy(false);
    if (autopilot_)
        autopilot_->hostReportedClose(directionId);
}

void DemoApp::onAutopilotFinished(int exitCode, const QString& message) {
    window_->homeScreen()->setBusy(false);
    log_->line(exitCode == 0 ? message
                             : QStringLiteral("autopilot stopped (exit %1): %2").arg(exitCode).arg(message));
    for (const QString& line : SubmissionSummary::formatTimings(autopilot_->timings()))
        log_->line(line);
    QTimer::singleShot(kFinalPictureDelayMs, this, [this, exitCode] {
        autopilot_->screenshots().captureWidget(window_.get(), QStringLiteral("window"));
        if (!options_.summary) {
            finishRun(exitCode);
            return;
        }
        const QString submission = autopilot_->submissionId();
        if (submission.isEmpty()) {
            log_->line(QStringLiteral("summary: no submission was started"));
            finishRun(exitCode);
            return;
        }
        SubmissionSummary::fetch(network_, backendUrl_, submission,
                                 [this, exitCode](std::optional<QJsonObject> record, QString error) {
                                     if (record) {
                                         for (const QString& line : SubmissionSummary::format(*record))
                                             log_->line(line);
                                     } else {
                                         log_->line(QStringLiteral("summary unavailable: ") + error);
                                     }
                                     finishRun(exitCode);
                                 });
    });
}

void DemoApp::finishRun(int exitCode) {
    if (ended_)
        return;
    ended_ = true;
    Q_EMIT finished(exitCode);
}

} // namespace tessara::demo
