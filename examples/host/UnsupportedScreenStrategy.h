#pragma once

#include "host/ScreenStrategy.h"

#include <QStringList>

namespace tessara::demo {

// Step kinds whose screens this build does not have yet: the run ends with exit code 3 and
// says which step it could not take.
class UnsupportedScreenStrategy : public ScreenStrategy {
public:
    static constexpr int kExitCode = 3;

    explicit UnsupportedScreenStrategy(QStringList types);

    bool handles(const QString& type) const override { return types_.contains(type); }
    bool drives() const override { return false; }
    StepPlan prepare(const StepScreen& screen, const StepContext& context) override;

    static QString message(const QString& directionId, const QString& type);

private:
    QStringList types_;
};

} // namespace tessara::demo
