#pragma once

#include "host/ScreenStrategy.h"

#include <QStringList>
#include <vector>

namespace tessara {
class TSRControl;
class TSRFormController;
} // namespace tessara

namespace tessara::demo {

// Drives a form step: fills every visible control from the answers (defaults where none is
// given), then picks the flow button that leads forward, or the way to close on a closing step.
class FormScreenStrategy : public ScreenStrategy {
public:
    // Every step type the SDK does not show otherwise is a form.
    bool handles(const QString&) const override { return true; }
    StepPlan prepare(TSRViewController& screen, const StepContext& context) override;

    // The form's controls in document order, sections entered in place (the section itself
    // comes before its children).
    static std::vector<TSRControl*> controlsInOrder(const TSRFormController& form);
    // The flow button that moves on: visible, not a popup, with a key and a direction that is
    // not the step back (the direction of the step this one replaced). Of several, the last in
    // document order that leads to a step not shown yet in this run, else the last: forms put
    // "back" before "next", and a reopened step knows no previous step to rule "back" out.
    // Null when none.
    static QAbstractButton* forwardButton(const TSRFormController& form, const QStringList& shownSteps);

private:
    static StepPlan closePlan(TSRFormController& form);
};

} // namespace tessara::demo
