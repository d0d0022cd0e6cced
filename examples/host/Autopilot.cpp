#include "host/Autopilot.h"

#include "host/DemoLog.h"
#include "host/UnsupportedScreenStrategy.h"
#include "host/UserGestures.h"

#include <QAbstractAnimation>
#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QGraphicsOpacityEffect>
#include <QLabel>

namespace tessara::demo {

namespace {

constexpr int kPollMs = 15;
// A screen that is still not settled after this long is taken as it is.
constexpr qint64 kMaxSettleMs = 1500;
// The SDK is silent on a refused step: the button comes back and nothing else happens. This
// long with the button back and the same screen counts as a refusal.
constexpr qint64 kRefusalGraceMs = 800;
constexpr int kLayoutPasses = 4;

// The SDK's alerts are dialogs named "alert" whose title, message and buttons are named too.
const QString kAlertName = QStringLiteral("alert");

QString labelText(const QDialog& box, const char* name) {
    const auto* label = box.findChild<QLabel*>(QLatin1String(name));
    return label ? label->text() : QString();
}

QString alertTitle(const QDialog& box) {
    const QString title = labelText(box, "alertTitle");
    return title.isEmpty() ? box.windowTitle() : title;
}

} // namespace

Autopilot::Autopilot(QWidget* hostScreen, Config config, DemoLog& log, QObject* parent)
    : QObject(parent)
    , host_(hostScreen)
    , config_(std::move(config))
    , log_(log)
    , strategies_(ScreenStrategies::standard())
    , screenshots_(config_.screenshotsDir) {
    poll_.setInterval(kPollMs);
    connect(&poll_, &QTimer::timeout, this, &Autopilot::tick);
    watchdog_.setSingleShot(true);
    connect(&watchdog_, &QTimer::timeout, this, [this] {
        finish(2, QStringLiteral("no progress within %1 s (last step: %2)")
                      .arg(config_.timeoutSeconds)
                      .arg(currentId().isEmpty() ? QStringLiteral("none yet") : currentId()));
    });
}

Autopilot::~Autopilot() = default;

void Autopilot::start() {
    clock_.start();
    poll_.start();
    if (config_.timeoutSeconds > 0) {
        watchdog_.setInterval(config_.timeoutSeconds * 1000);
        watchdog_.start();
    }
}

void Autopilot::hostReportedStart(bool success, const QString& error) {
    progressed();
    if (!success)
        finish(1, QStringLiteral("the process did not start: %1").arg(error));
}

void Autopilot::hostReportedClose(const QString& directionId) {
    progressed();
    if (phase_ == Phase::closing && !timings_.empty())
        timings_.back().answerMs = clock_.elapsed() - phaseStartedMs_;
    finish(0, QStringLiteral("closed on step %1").arg(directionId));
}

QString Autopilot::currentId() const {
    return screen_.directionId();
}

void Autopilot::progressed() {
    if (config_.timeoutSeconds > 0 && !finished_)
        watchdog_.start();
}

void Autopilot::finish(int exitCode, const QString& message) {
    if (finished_)
        return;
    finished_ = true;
    poll_.stop();
    watchdog_.stop();
    exitCode_ = exitCode;
    message_ = message;
    Q_EMIT finished(exitCode, message);
}

QDialog* Autopilot::newAlert() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QDialog*>(window);
        if (box && box != alert_ && box->isVisible() && box->objectName() == kAlertName)
            return box;
    }
    return nullptr;
}

bool Autopilot::settled(QWidget* screen) const {
    if (!screen->isVisible() || screen->width() <= 0 || screen->height() <= 0)
        return false;
    // Screens fade in; a picture taken halfway would show a ghost.
    for (auto* animation : host_->findChildren<QAbstractAnimation*>()) {
        if (animation->state() == QAbstractAnimation::Running)
            return false;
    }
    for (auto* effect : host_->findChildren<QGraphicsOpacityEffect*>()) {
        if (effect->isEnabled() && effect->opacity() < 0.999)
            return false;
    }
    return true;
}

void Autopilot::tick() {
    if (finished_ || busy_)
        return;
    // Filling a form spins the event loop (menus); the poll must not act again meanwhile.
    busy_ = true;
    struct Release {
        bool& flag;
        ~Release() { flag = false; }
    } release{busy_};

    if (QDialog* box = newAlert()) {
        handleAlert(box);
        return;
    }
    const StepScreen screen = StepScreen::visibleIn(host_);
    if (screen && screen != screen_) {
        onNewScreen(screen);
        return;
    }
    const qint64 now = clock_.elapsed();
    switch (phase_) {
    case Phase::settling:
        // At least one full turn of the poll, so posted layout requests have run.
        if (screen_ && now - phaseStartedMs_ >= kPollMs &&
            (settled(screen_.widget()) || now - phaseStartedMs_ > kMaxSettleMs))
            act(screen_);
        break;
    case Phase::awaitingAnswer: {
        const bool back = pressed_ && pressed_->isEnabled() && screen == screen_ && !screen_.isLocked();
        if (!back) {
            buttonBackSinceMs_ = -1;
        } else if (buttonBackSinceMs_ < 0) {
            buttonBackSinceMs_ = now;
        } else if (now - buttonBackSinceMs_ > kRefusalGraceMs) {
            finish(1, QStringLiteral("step %1 was not accepted: the backend refused it or did not answer "
                                     "(the SDK shows nothing then; see the backend's log)")
                          .arg(currentId()));
        }
        break;
    }
    case Phase::waitingForScreen:
    case Phase::closing:
        break;
    }
}

void Autopilot::onNewScreen(const StepScreen& screen) {
    progressed();
    const qint64 now = clock_.elapsed();
    if (phase_ == Phase::awaitingAnswer && !timings_.empty())
        timings_.back().answerMs = now - phaseStartedMs_;
    screen_ = screen;
    const QString id = currentId();
    const QString type = screen.type().isEmpty() ? QStringLiteral("no type") : screen.type();
    if (!screen.submissionId().isEmpty())
        submissionId_ = screen.submissionId();
    log_.line(QStringLiteral("step shown: %1 (%2)").arg(id, type));
    timings_.push_back(StepTiming{id, type});
    shownSteps_.append(id);
    phase_ = Phase::settling;
    phaseStartedMs_ = now;
    if (config_.untilDirectionId && *config_.untilDirectionId == id)
        finish(0, QStringLiteral("reached step %1").arg(id));
}

void Autopilot::act(const StepScreen& screen) {
    const QString id = currentId();
    const QString type = screen.type();
    qint64 started = clock_.elapsed();
    timings_.back().settleMs = started - phaseStartedMs_;
    screenshots_.captureWidget(host_, id);

    ScreenStrategy* strategy = strategies_.strategyFor(type);
    if (!strategy) {
        finish(1, QStringLiteral("no way to drive step %1 of type %2").arg(id, type));
        return;
    }
    QPointer<QWidget> guard(screen.widget());
    const StepPlan plan = strategy->prepare(
        screen, StepContext{config_.answers, log_, shownSteps_, [this, id](const QString& what) {
                                screenshots_.captureWidget(host_, id + QLatin1Char('-') + what);
                            }});
    timings_.back().fillMs = clock_.elapsed() - started;
    // A strategy that waits spins the event loop, where the watchdog may have ended the run.
    if (finished_)
        return;
    if (plan.kind == StepPlan::Kind::stop) {
        finish(plan.exitCode, plan.message);
        return;
    }
    if (plan.kind == StepPlan::Kind::awaitLeave) {
        // The next screen ends the wait as after a press; the watchdog covers a screen that stays.
        log_.line(QStringLiteral("  the step leads on by itself"));
        phase_ = Phase::awaitingAnswer;
        buttonBackSinceMs_ = -1;
        phaseStartedMs_ = clock_.elapsed();
        pressed_ = nullptr;
        return;
    }
    if (!guard || !plan.button) {
        finish(1, QStringLiteral("step %1 went away while it was being filled").arg(id));
        return;
    }
    // What was entered shows and hides sections; their layout settles over a few passes.
    for (int pass = 0; pass < kLayoutPasses; ++pass) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    if (!guard || !plan.button) {
        finish(1, QStringLiteral("step %1 went away before its button was pressed").arg(id));
        return;
    }
    // The button is brought into view before the picture, as a user scrolls to it.
    UserGestures::scrollIntoView(plan.button);
    if (plan.filled > 0)
        screenshots_.captureWidget(host_, id + QStringLiteral("-filled"));

    if (plan.kind == StepPlan::Kind::forward && config_.stepTypeLookup) {
        // The SDK of this build ends the program on a step it has no screen for.
        const std::optional<QString> nextType = config_.stepTypeLookup(plan.directionId);
        if (nextType && !strategies_.drives(*nextType)) {
            if (!config_.lastAnsweredStep) {
                // No way to step in between the answer and the SDK: stop before sending.
                finishBeforeUnshowable(plan.directionId, *nextType);
                return;
            }
            unshowable_ = Unshowable{plan.directionId, *nextType};
        }
    }

    const QString title = plan.button->text().isEmpty() ? plan.button->objectName() : plan.button->text();
    if (plan.kind == StepPlan::Kind::forward) {
        log_.line(QStringLiteral("  press \"%1\" -> %2").arg(title, plan.directionId));
        phase_ = Phase::awaitingAnswer;
        buttonBackSinceMs_ = -1;
    } else {
        log_.line(QStringLiteral("  close: press \"%1\"").arg(title));
        phase_ = Phase::closing;
    }
    phaseStartedMs_ = clock_.elapsed();
    pressed_ = plan.button;
    UserGestures::click(plan.button);
}

void Autopilot::finishBeforeUnshowable(const QString& directionId, const QString& type) {
    if (config_.untilDirectionId && *config_.untilDirectionId == directionId)
        finish(0,
               QStringLiteral("reached step %1 (stopped before it: this build cannot show a %2 step, so the "
                              "values of step %3 were not sent)")
                   .arg(directionId, type, currentId()));
    else
        finish(UnsupportedScreenStrategy::kExitCode, UnsupportedScreenStrategy::message(directionId, type));
}

void Autopilot::backendActivity() {
    if (finished_ || !unshowable_ || submissionId_.isEmpty() || !config_.lastAnsweredStep)
        return;
    if (config_.lastAnsweredStep(submissionId_) != unshowable_->directionId)
        return;
    if (!timings_.empty())
        timings_.back().answerMs = clock_.elapsed() - phaseStartedMs_;
    const Unshowable next = *unshowable_;
    // Deleted now, not later: the answer may be read on the next turn of the event loop, and
    // the form drops an answer once it is gone.
    StepScreen::withdrawAll(host_);
    log_.line(
        QStringLiteral("  the backend answered step %1; this build has no %2 screen, so the SDK's screens "
                       "were taken away before it could fail on it")
            .arg(next.directionId, next.type));
    if (config_.untilDirectionId && *config_.untilDirectionId == next.directionId)
        finish(0, QStringLiteral("reached step %1").arg(next.directionId));
    else
        finish(UnsupportedScreenStrategy::kExitCode,
               UnsupportedScreenStrategy::message(next.directionId, next.type));
}

void Autopilot::handleAlert(QDialog* box) {
    progressed();
    alert_ = box;
    const QString id = currentId();
    const QString title = alertTitle(*box);
    const QString text = labelText(*box, "alertMessage");
    screenshots_.captureAlert(host_, box,
                              (id.isEmpty() ? QStringLiteral("start") : id) + QStringLiteral("-alert"));
    log_.line(
        QStringLiteral("alert: %1%2").arg(title, text.isEmpty() ? QString() : QStringLiteral(" | ") + text));

    if (phase_ == Phase::closing) {
        auto* confirm = box->findChild<QAbstractButton*>(QStringLiteral("destroyAction"));
        if (!confirm) {
            finish(1, QStringLiteral("the close alert on step %1 has no \"destroyAction\" button").arg(id));
            return;
        }
        log_.line(QStringLiteral("  confirm: press \"%1\"").arg(confirm->text()));
        UserGestures::click(confirm);
        return;
    }
    if (phase_ == Phase::awaitingAnswer) {
        if (!timings_.empty())
            timings_.back().answerMs = clock_.elapsed() - phaseStartedMs_;
        finish(1, QStringLiteral("the answers were refused on step %1: %2%3")
                      .arg(id, title, text.isEmpty() ? QString() : QStringLiteral(": ") + text));
        return;
    }
    finish(1, QStringLiteral("unexpected alert on step %1: %2").arg(id, title));
}

} // namespace tessara::demo
