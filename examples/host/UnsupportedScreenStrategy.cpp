#include "host/UnsupportedScreenStrategy.h"

#include "tessara/api/TSRViewController.h"

namespace tessara::demo {

UnsupportedScreenStrategy::UnsupportedScreenStrategy(QStringList types)
    : types_(std::move(types)) {}

QString UnsupportedScreenStrategy::message(const QString& directionId, const QString& type) {
    return QStringLiteral("step %1 of type %2 is not supported by this build").arg(directionId, type);
}

StepPlan UnsupportedScreenStrategy::prepare(TSRViewController& screen, const StepContext&) {
    const QString id = screen.ui ? screen.ui->directionId.value_or(QString()) : QString();
    const QString type = screen.ui ? screen.ui->type.value_or(QString()) : QString();
    return StepPlan::stop(kExitCode, message(id, type));
}

} // namespace tessara::demo
