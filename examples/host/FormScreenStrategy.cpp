#include "host/FormScreenStrategy.h"

#include "host/ControlFiller.h"
#include "host/DemoLog.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/form/TSRSectionView.h"
#include "tessara/form/controls/TSRA1Button.h"
#include "tessara/form/controls/TSRFlowButton.h"

#include <QScrollArea>
#include <QSet>

namespace tessara::demo {

namespace {

// Visibility changes while the form is filled (a choice reveals a section), so the walk is
// repeated until a pass finds nothing new; a few passes cover any depth of reveals.
constexpr int kMaxFillPasses = 4;

void appendInOrder(const std::vector<TSRControl*>& controls, std::vector<TSRControl*>& out) {
    for (TSRControl* control : controls) {
        out.push_back(control);
        if (auto* section = dynamic_cast<TSRSectionView*>(control))
            appendInOrder(section->formFields, out);
    }
}

bool shownOn(TSRControl* control, const QWidget& screen) {
    QWidget* widget = control->widget();
    return widget && widget->isVisibleTo(&screen);
}

} // namespace

std::vector<TSRControl*> FormScreenStrategy::controlsInOrder(const TSRFormController& form) {
    std::vector<TSRControl*> out;
    appendInOrder(form.formFields(), out);
    return out;
}

QAbstractButton* FormScreenStrategy::forwardButton(const TSRFormController& form,
                                                   const QStringList& shownSteps) {
    const std::optional<QString> back = form.previousDirectionId;
    TSRFlowButton* last = nullptr;
    TSRFlowButton* lastToNewStep = nullptr;
    for (TSRControl* control : controlsInOrder(form)) {
        auto* button = dynamic_cast<TSRFlowButton*>(control);
        if (!button || button->opensPopup() || !shownOn(control, form) || !button->field)
            continue;
        const FieldJSON& field = *button->field;
        if (!field.key || !field.directionId || field.directionId->isEmpty())
            continue;
        if (back && *back == *field.directionId)
            continue;
        last = button;
        if (!shownSteps.contains(*field.directionId))
            lastToNewStep = button;
    }
    return lastToNewStep ? lastToNewStep : last;
}

StepPlan FormScreenStrategy::closePlan(TSRFormController& form) {
    StepPlan plan;
    plan.kind = StepPlan::Kind::close;
    // The closing screen's own button says goodbye; it is not among the form's fields.
    for (auto* a1 : form.findChildren<TSRA1Button*>()) {
        if (a1->isVisibleTo(&form)) {
            plan.button = a1;
            return plan;
        }
    }
    // Otherwise the close button in the navigation bar (the bar lives outside the screen).
    QWidget* top = form.window();
    for (auto* button :
         top->findChildren<QAbstractButton*>(QStringLiteral("TSRFormController.closeButton"))) {
        if (button->isVisible()) {
            plan.button = button;
            return plan;
        }
    }
    const QString id = form.ui ? form.ui->directionId.value_or(QString()) : QString();
    return StepPlan::stop(1, QStringLiteral("step %1 offers no way forward and no close button").arg(id));
}

StepPlan FormScreenStrategy::prepare(TSRViewController& screen, const StepContext& context) {
    auto* form = qobject_cast<TSRFormController*>(&screen);
    if (!form)
        return StepPlan::stop(1, QStringLiteral("a form step is on screen without a form screen"));

    ControlFiller filler(context.answers);
    QSet<TSRControl*> visited;
    int entered = 0;
    for (int pass = 0; pass < kMaxFillPasses; ++pass) {
        bool any = false;
        for (TSRControl* control : controlsInOrder(*form)) {
            if (visited.contains(control) || !shownOn(control, *form))
                continue;
            visited.insert(control);
            // Scrolled into view first, as a user would before typing.
            if (form->scrollView())
                form->scrollView()->ensureWidgetVisible(control->widget(), 0, 48);
            const ControlFiller::Result result = filler.fill(*control);
            if (!result.acted)
                continue;
            any = true;
            if (result.error)
                return StepPlan::stop(1, *result.error);
            context.log.line(QStringLiteral("  %1: %2").arg(control->key(), result.entered));
            ++entered;
        }
        if (!any)
            break;
    }

    if (form->findChildren<TSRA1Button*>().isEmpty()) {
        if (QAbstractButton* forward = forwardButton(*form, context.shownSteps)) {
            StepPlan plan;
            plan.kind = StepPlan::Kind::forward;
            plan.button = forward;
            plan.directionId = dynamic_cast<TSRFlowButton*>(forward)->field->directionId.value_or(QString());
            plan.filled = entered;
            return plan;
        }
    }
    StepPlan plan = closePlan(*form);
    plan.filled = entered;
    return plan;
}

} // namespace tessara::demo
