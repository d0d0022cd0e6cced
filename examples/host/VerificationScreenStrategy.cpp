#include "host/VerificationScreenStrategy.h"

#include "host/DemoLog.h"
#include "host/UserGestures.h"

#include <QElapsedTimer>
#include <algorithm>
#include <array>

namespace tessara::demo {

namespace {

const QString kScreen = QStringLiteral("TSRNativeKYCController");

bool shown(const QWidget* widget) {
    return widget && !widget->isHidden() && widget->isVisible();
}

// A phase worth a picture: its name in the file, the view that shows only in it, and how long
// that view shows before the picture: the turn to the front camera takes 0.3 s, while a phase
// the service hurries through may last a fraction of a second.
struct Phase {
    const char* name;
    const char* view;
    int settleMs;
};

constexpr std::array<Phase, 4> kPhases{{
    {"document", "idCardCutoutImageView", 100},
    {"reading", "progressView", 100},
    {"selfie", "faceCutoutImageView", 350},
    {"touch", "whiteWebView", 100},
}};

} // namespace

StepPlan VerificationScreenStrategy::prepare(const StepScreen& screen, const StepContext& context) {
    if (!screen || screen.kind() != kScreen)
        return StepPlan::stop(1, QStringLiteral("a verification step is on screen without its screen"));
    QPointer<QWidget> widget(screen.widget());
    auto* button = widget->findChild<QAbstractButton*>(kScreen + QStringLiteral(".continueButton"));
    if (!button)
        return StepPlan::stop(
            1, QStringLiteral("verification step %1 has no continue button").arg(screen.directionId()));
    QPointer<QAbstractButton> go(button);

    QElapsedTimer clock;
    clock.start();
    std::array<qint64, kPhases.size()> since;
    since.fill(-1);
    // A phase already on show has been there since the screen settled: its picture is due now.
    for (size_t i = 0; i < kPhases.size(); ++i) {
        if (shown(widget->findChild<QWidget*>(QLatin1String(kPhases[i].view))))
            since[i] = -kPhases[i].settleMs;
    }
    std::array<bool, kPhases.size()> pictured{};
    auto watch = [&] {
        if (!widget || !go)
            return true;
        for (size_t i = 0; i < kPhases.size(); ++i) {
            if (pictured[i])
                continue;
            if (!shown(widget->findChild<QWidget*>(QLatin1String(kPhases[i].view)))) {
                since[i] = -1;
            } else if (since[i] < 0) {
                since[i] = clock.elapsed();
            } else if (clock.elapsed() - since[i] >= kPhases[i].settleMs) {
                pictured[i] = true;
                context.log.line(QStringLiteral("  %1 shown after %2 ms")
                                     .arg(QLatin1String(kPhases[i].name))
                                     .arg(std::max<qint64>(0, since[i])));
                if (context.capture)
                    context.capture(QLatin1String(kPhases[i].name));
            }
        }
        return shown(go);
    };
    if (!UserGestures::waitFor(watch, kVerdictWaitMs))
        return StepPlan::stop(2, QStringLiteral("verification step %1: no verdict within %2 s")
                                     .arg(screen.directionId())
                                     .arg(kVerdictWaitMs / 1000));

    StepPlan plan;
    plan.kind = StepPlan::Kind::awaitLeave;
    if (!widget || !go)
        return plan;
    context.log.line(QStringLiteral("  verdict after %1 ms").arg(clock.elapsed()));
    if (context.capture)
        context.capture(QStringLiteral("verdict"));
    // A verdict that leads on by itself makes the button busy at once; pressing it then would send
    // the step twice.
    if (UserGestures::waitFor([&] { return !widget || !go || !go->isEnabled(); }, kSelfLeaveWaitMs))
        return plan;
    plan.kind = StepPlan::Kind::forward;
    plan.button = go;
    return plan;
}

} // namespace tessara::demo
