#include "host/FormScreenStrategy.h"

#include "host/ControlFiller.h"
#include "host/DemoLog.h"
#include "host/UserGestures.h"

#include <QSet>
#include <algorithm>

namespace tessara::demo {

namespace {

// Visibility changes while the form is filled (a choice reveals a section), so the walk is
// repeated until a pass finds nothing new; a few passes cover any depth of reveals.
constexpr int kMaxFillPasses = 4;

bool shownOn(const ScreenControl& control, const QWidget& screen) {
    return control.widget() && control.widget()->isVisibleTo(&screen);
}

QString directionOf(const QWidget* button) {
    return button ? button->property("directionId").toString() : QString();
}

} // namespace

QAbstractButton* FormScreenStrategy::forwardButton(const StepScreen& screen, const QStringList& shownSteps) {
    if (!screen)
        return nullptr;
    const QString back = screen.previousDirectionId();
    QAbstractButton* last = nullptr;
    QAbstractButton* lastToNewStep = nullptr;
    for (const ScreenControl& control : ScreenControl::inOrder(*screen.widget())) {
        auto* button = qobject_cast<QAbstractButton*>(control.widget());
        if (control.kind() != ScreenControl::Kind::flow || !button || !shownOn(control, *screen.widget()) ||
            button->property("opensPopup").toBool())
            continue;
        const QString direction = directionOf(button);
        if (direction.isEmpty() || direction == back)
            continue;
        last = button;
        if (!shownSteps.contains(direction))
            lastToNewStep = button;
    }
    return lastToNewStep ? lastToNewStep : last;
}

StepPlan FormScreenStrategy::closePlan(const StepScreen& screen, const std::vector<ScreenControl>& controls) {
    StepPlan plan;
    plan.kind = StepPlan::Kind::close;
    // The closing screen's own button says goodbye.
    for (const ScreenControl& control : controls) {
        auto* button = qobject_cast<QAbstractButton*>(control.widget());
        if (control.kind() == ScreenControl::Kind::closing && button && shownOn(control, *screen.widget())) {
            plan.button = button;
            return plan;
        }
    }
    // Otherwise the close button in the navigation bar (the bar lives outside the screen).
    const QString closeName = screen.kind() + QStringLiteral(".closeButton");
    for (auto* button : screen.widget()->window()->findChildren<QAbstractButton*>(closeName)) {
        if (button->isVisible()) {
            plan.button = button;
            return plan;
        }
    }
    return StepPlan::stop(
        1, QStringLiteral("step %1 offers no way forward and no close button").arg(screen.directionId()));
}

StepPlan FormScreenStrategy::prepare(const StepScreen& screen, const StepContext& context) {
    if (!screen)
        return StepPlan::stop(1, QStringLiteral("a form step is on screen without a form screen"));
    QWidget& form = *screen.widget();

    ControlFiller filler(context.answers);
    QSet<QWidget*> visited;
    int entered = 0;
    for (int pass = 0; pass < kMaxFillPasses; ++pass) {
        bool any = false;
        for (const ScreenControl& control : ScreenControl::inOrder(form)) {
            if (visited.contains(control.widget()) || !shownOn(control, form))
                continue;
            visited.insert(control.widget());
            UserGestures::scrollIntoView(control.widget());
            const ControlFiller::Result result = filler.fill(control);
            if (!result.acted)
                continue;
            any = true;
            if (result.error)
                return StepPlan::stop(1, *result.error);
            context.log.line(QStringLiteral("  %1: %2").arg(control.key(), result.entered));
            ++entered;
        }
        if (!any)
            break;
    }

    const std::vector<ScreenControl> controls = ScreenControl::inOrder(form);
    const bool closingScreen =
        std::any_of(controls.begin(), controls.end(), [](const ScreenControl& control) {
            return control.kind() == ScreenControl::Kind::closing;
        });
    if (!closingScreen) {
        if (QAbstractButton* forward = forwardButton(screen, context.shownSteps)) {
            StepPlan plan;
            plan.kind = StepPlan::Kind::forward;
            plan.button = forward;
            plan.directionId = directionOf(forward);
            plan.filled = entered;
            return plan;
        }
    }
    StepPlan plan = closePlan(screen, controls);
    plan.filled = entered;
    return plan;
}

} // namespace tessara::demo
