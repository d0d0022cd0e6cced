#include "host/UnsupportedScreenStrategy.h"

namespace tessara::demo {

UnsupportedScreenStrategy::UnsupportedScreenStrategy(QStringList types)
    : types_(std::move(types)) {}

QString UnsupportedScreenStrategy::message(const QString& directionId, const QString& type) {
    return QStringLiteral("step %1 of type %2 is not supported by this build").arg(directionId, type);
}

StepPlan UnsupportedScreenStrategy::prepare(const StepScreen& screen, const StepContext&) {
    return StepPlan::stop(kExitCode, message(screen.directionId(), screen.type()));
}

} // namespace tessara::demo
