#include "host/CalculatorScreenStrategy.h"

#include "host/AnswerBook.h"
#include "host/DemoLog.h"
#include "host/UserGestures.h"

#include <QAbstractSlider>
#include <QAction>
#include <QCoreApplication>
#include <QDate>
#include <QLineEdit>
#include <QRegularExpression>
#include <cmath>

namespace tessara::demo {

namespace {

const QString kScreen = QStringLiteral("TSRCreditCalculatorController");
const QString kDropdown = QStringLiteral("TSRCreditProductDropdownButton.");
// A finger passes through several positions on its way.
constexpr int kDragMoves = 8;

template <typename T> T* part(const StepScreen& screen, const QString& role) {
    return screen.widget()->findChild<T*>(kScreen + QLatin1Char('.') + role);
}

bool shown(const QWidget* widget) {
    return widget && !widget->isHidden() && widget->isVisible();
}

StepPlan failure(const StepScreen& screen, const QString& what) {
    return StepPlan::stop(1, QStringLiteral("calculator step %1: %2").arg(screen.directionId(), what));
}

} // namespace

bool CalculatorScreenStrategy::idle(const StepScreen& screen) {
    auto* go = part<QAbstractButton>(screen, QStringLiteral("continueButton"));
    if (!go || !shown(go) || !go->isEnabled())
        return false;
    for (const char* busy : {"loadingIndicator", "dateButton.activityIndicator", "spinner"}) {
        for (QWidget* spinner : screen.widget()->findChildren<QWidget*>(kScreen + QLatin1Char('.') + busy)) {
            if (shown(spinner))
                return false;
        }
    }
    return true;
}

void CalculatorScreenStrategy::drag(QAbstractSlider* slider, double value) {
    const double low = slider->property("floatMinimum").toDouble();
    const double high = slider->property("floatMaximum").toDouble();
    const double share = high > low ? std::clamp((value - low) / (high - low), 0.0, 1.0) : 0.0;
    const int target = slider->minimum() + int(std::lround(share * (slider->maximum() - slider->minimum())));
    const int start = slider->sliderPosition();
    slider->setSliderDown(true);
    for (int move = 1; move <= kDragMoves; ++move) {
        slider->setSliderPosition(start + (target - start) * move / kDragMoves);
        QCoreApplication::processEvents();
    }
    slider->setSliderDown(false);
}

StepPlan CalculatorScreenStrategy::prepare(const StepScreen& screen, const StepContext& context) {
    if (!screen || screen.kind() != kScreen)
        return StepPlan::stop(1,
                              QStringLiteral("a calculator step is on screen without a calculator screen"));
    int entered = 0;

    const QRegularExpression dropdownName(QStringLiteral("^") + QRegularExpression::escape(kDropdown) +
                                          QStringLiteral("[^.]+$"));
    const QList<QLineEdit*> dropdowns = screen.widget()->findChildren<QLineEdit*>(dropdownName);
    if (QLineEdit* dropdown = dropdowns.isEmpty() ? nullptr : dropdowns.first()) {
        const QString key = dropdown->objectName().mid(kDropdown.size());
        if (const std::optional<QString> product = context.answers.answer(key)) {
            auto* opener =
                dropdown->findChild<QAbstractButton*>(dropdown->objectName() + QStringLiteral(".mainButton"));
            const QString item = dropdown->objectName() + QLatin1Char('.') + *product;
            if (!opener || UserGestures::pickFromMenu(opener, [&](QAction* a) {
                               return a->objectName() == item;
                           }) != UserGestures::MenuOutcome::picked)
                return failure(screen, QStringLiteral("no product %1 to choose for %2").arg(*product, key));
            context.log.line(QStringLiteral("  %1: %2").arg(key, *product));
            ++entered;
        }
    }
    if (!UserGestures::waitFor([&] { return idle(screen); }, kLoadWaitMs))
        return failure(screen, QStringLiteral("the plan did not load"));

    for (const char* role : {"amountSlider", "periodSlider"}) {
        auto* slider = part<QAbstractSlider>(screen, QLatin1String(role));
        const QString key = slider ? slider->property("fieldKey").toString() : QString();
        const std::optional<QString> answer = key.isEmpty() ? std::nullopt : context.answers.answer(key);
        if (!answer)
            continue;
        bool number = false;
        const double value = answer->toDouble(&number);
        if (!number)
            return failure(screen, QStringLiteral("%1 is no number: %2").arg(key, *answer));
        UserGestures::scrollIntoView(slider);
        drag(slider, value);
        context.log.line(QStringLiteral("  %1: drag to %2").arg(key, *answer));
        ++entered;
        if (!UserGestures::waitFor([&] { return idle(screen); }, kLoadWaitMs))
            return failure(screen, QStringLiteral("the plan for %1 did not load").arg(key));
    }

    auto* date = part<QAbstractButton>(screen, QStringLiteral("dateButton"));
    const QString dateKey = date ? date->property("fieldKey").toString() : QString();
    if (const std::optional<QString> day =
            dateKey.isEmpty() ? std::nullopt : context.answers.answer(dateKey)) {
        const QDate wanted = QDate::fromString(*day, QStringLiteral("yyyy-MM-dd"));
        const QString item = kScreen + QStringLiteral(".date.") + wanted.toString(Qt::ISODate);
        if (!wanted.isValid() || !date->isEnabled() || UserGestures::pickFromMenu(date, [&](QAction* a) {
                                                           return a->objectName() == item;
                                                       }) != UserGestures::MenuOutcome::picked)
            return failure(screen, QStringLiteral("the date %1 is not offered for %2").arg(*day, dateKey));
        context.log.line(QStringLiteral("  %1: %2").arg(dateKey, *day));
        ++entered;
    }

    if (!UserGestures::waitFor([&] { return idle(screen); }, kLoadWaitMs))
        return failure(screen, QStringLiteral("the plan or the dates did not load"));
    StepPlan plan;
    plan.kind = StepPlan::Kind::forward;
    plan.button = part<QAbstractButton>(screen, QStringLiteral("continueButton"));
    plan.directionId = plan.button->property("directionId").toString();
    plan.filled = entered;
    return plan;
}

} // namespace tessara::demo
