#pragma once

#include "host/ScreenStrategy.h"

#include <QString>

class QAbstractSlider;

namespace tessara::demo {

// Drives a credit calculator step as a user would, each only when the answers name the key of
// the field it decides: the product in the dropdown, the amount and the number of periods by
// dragging their sliders and letting go, the first instalment date from the date menu once the
// dates are in. Then it waits until no plan or dates are on their way and presses continue.
// Without answers the screen's own choices stand.
class CalculatorScreenStrategy : public ScreenStrategy {
public:
    // How long a plan, the dates or the rows may take to arrive.
    static constexpr int kLoadWaitMs = 10000;

    bool handles(const QString& type) const override { return type == QLatin1String("CREDIT_CALCULATOR"); }
    StepPlan prepare(const StepScreen& screen, const StepContext& context) override;

    // Drags `slider` from where it is to the position of `value` and lets go: value changes
    // while it moves, one release at the end. The slider's range stands for the float bounds it
    // shows as the properties "floatMinimum" and "floatMaximum".
    static void drag(QAbstractSlider* slider, double value);

private:
    // True once nothing the screen asked for is still on its way.
    static bool idle(const StepScreen& screen);
};

} // namespace tessara::demo
