#pragma once

#include "host/AnswerBook.h"
#include "host/ScreenStrategies.h"
#include "host/ScreenshotRecorder.h"
#include "host/StepTiming.h"
#include "tessara/ui/Alert.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

class QAbstractButton;

namespace tessara {
class TSRViewController;
} // namespace tessara

namespace tessara::demo {

class DemoLog;

// Runs a process without a user. It watches the host's widget for the SDK's step screens and
// alerts, fills each new step (through the screen kind's strategy), presses the button that
// leads forward, and on a closing step closes and confirms. It ends with `finished`:
// 0 done (closed, or --until reached), 1 the start failed or the answers were refused,
// 2 no progress in time, 3 a step this build cannot show. Main thread only.
class Autopilot : public QObject {
    Q_OBJECT
public:
    struct Config {
        AnswerBook answers;
        QString screenshotsDir;
        int timeoutSeconds = 60;
        std::optional<QString> untilDirectionId;
        // The type of the step a direction leads to, when the backend's definitions are at
        // hand (the embedded backend). It lets the run stop in good order before a step the
        // SDK of this build cannot show.
        std::function<std::optional<QString>(const QString& directionId)> stepTypeLookup;
        // The step the backend last answered to a submission, read straight from an embedded
        // backend. With it a step before an unshowable one is still sent: the SDK's screens are
        // taken away the moment the backend has answered (see backendActivity).
        std::function<std::optional<QString>(const QString& submissionId)> lastAnsweredStep;
    };

    Autopilot(QWidget* hostScreen, Config config, DemoLog& log, QObject* parent = nullptr);
    ~Autopilot() override;

    // Starts watching. Call before the process is started.
    void start();

    // What the host was told; the run's end depends on it.
    void hostReportedStart(bool success, const QString& error);
    void hostReportedClose(const QString& directionId);
    // Call synchronously from the embedded backend's request log, before the SDK can read the
    // answer. When the backend has just answered a step this build cannot show, the SDK's
    // screens are removed at once (its pending answer then finds no screen and is dropped) and
    // the run ends: 0 when that step is the --until step, else 3.
    void backendActivity();

    bool isFinished() const { return finished_; }
    int exitCode() const { return exitCode_; }
    QString finalMessage() const { return message_; }
    // The submission of the steps on screen, once one was seen.
    QString submissionId() const { return submissionId_; }
    const std::vector<StepTiming>& timings() const { return timings_; }
    ScreenshotRecorder& screenshots() { return screenshots_; }

Q_SIGNALS:
    void finished(int exitCode, const QString& message);

private:
    enum class Phase { waitingForScreen, settling, awaitingAnswer, closing };

    void tick();
    TSRViewController* visibleScreen() const;
    Alert* newAlert();
    bool settled(TSRViewController* screen) const;
    void onNewScreen(TSRViewController* screen);
    void act(TSRViewController* screen);
    void handleAlert(Alert* alert);
    void press(QAbstractButton* button);
    void progressed();
    void finish(int exitCode, const QString& message);
    // Ends the run because the next step is `directionId` of `type`, which no strategy drives.
    void finishBeforeUnshowable(const QString& directionId, const QString& type);
    void withdrawSdkScreens();
    QString currentId() const;

    QPointer<QWidget> host_;
    Config config_;
    DemoLog& log_;
    ScreenStrategies strategies_;
    ScreenshotRecorder screenshots_;

    QTimer poll_;
    QTimer watchdog_;
    QElapsedTimer clock_;
    Phase phase_ = Phase::waitingForScreen;
    QPointer<TSRViewController> screen_;
    QPointer<Alert> alert_;
    QPointer<QAbstractButton> pressed_;
    qint64 phaseStartedMs_ = 0;
    qint64 buttonBackSinceMs_ = -1;
    bool busy_ = false;
    bool finished_ = false;
    int exitCode_ = -1;
    QString message_;
    QString submissionId_;
    std::vector<StepTiming> timings_;
    QStringList shownSteps_;
    struct Unshowable {
        QString directionId;
        QString type;
    };
    std::optional<Unshowable> unshowable_;
};

} // namespace tessara::demo
