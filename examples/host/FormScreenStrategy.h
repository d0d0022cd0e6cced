#pragma once

#include "host/ScreenControl.h"
#include "host/ScreenStrategy.h"

#include <QStringList>

namespace tessara::demo {

// Drives a form step: fills every visible control from the answers (defaults where none is
// given), then picks the flow button that leads forward, or the way to close on a closing step.
class FormScreenStrategy : public ScreenStrategy {
public:
    // Every step type the SDK does not show otherwise is a form.
    bool handles(const QString&) const override { return true; }
    StepPlan prepare(const StepScreen& screen, const StepContext& context) override;

    // The flow button that moves on: visible, not a popup, with a direction that is not the
    // step back (the direction of the step this one replaced). Of several, the last in
    // document order that leads to a step not shown yet in this run, else the last: forms put
    // "back" before "next", and a reopened step knows no previous step to rule "back" out.
    // Null when none.
    static QAbstractButton* forwardButton(const StepScreen& screen, const QStringList& shownSteps);

private:
    static StepPlan closePlan(const StepScreen& screen, const std::vector<ScreenControl>& controls);
};

} // namespace tessara::demo
