#pragma once

#include "host/StepScreen.h"

#include <QAbstractButton>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <functional>

namespace tessara::demo {

class AnswerBook;
class DemoLog;

// What the autopilot does next on a screen, once a strategy has filled it.
struct StepPlan {
    enum class Kind {
        forward, // press `button`, which leads to `directionId`
        close,   // press `button` (the closing screen's button or the close button)
        stop,    // end the run with `exitCode` and `message`
        // nothing to press: the screen leaves by itself (a verdict of the verification service),
        // or has already gone
        awaitLeave,
    };
    Kind kind = Kind::stop;
    QPointer<QAbstractButton> button;
    QString directionId;
    // How many controls the strategy entered something into.
    int filled = 0;
    int exitCode = 1;
    QString message;

    static StepPlan stop(int exitCode, QString message) {
        StepPlan plan;
        plan.exitCode = exitCode;
        plan.message = std::move(message);
        return plan;
    }
};

// What a strategy may consult while it drives a screen.
struct StepContext {
    const AnswerBook& answers;
    DemoLog& log;
    // The direction ids of the steps shown so far in this run, the current one last.
    const QStringList& shownSteps;
    // Keeps a picture of the host's widget now, named after the step and `what`; may be empty.
    std::function<void(const QString& what)> capture;
};

// How the autopilot drives one kind of step screen. Each kind of screen the SDK can show gets
// one small class (added to ScreenStrategies::standard()); the autopilot itself knows nothing
// about controls. Strategies see the screen as a host does: widgets by objectName, used through
// their Qt base types, and the step through the screen's properties.
class ScreenStrategy {
public:
    virtual ~ScreenStrategy() = default;

    // True when this strategy drives steps of `type`.
    virtual bool handles(const QString& type) const = 0;
    // False for a strategy that only reports that this build cannot show such a step.
    virtual bool drives() const { return true; }
    // Fills `screen` and says what to press; presses nothing itself.
    virtual StepPlan prepare(const StepScreen& screen, const StepContext& context) = 0;
};

} // namespace tessara::demo
