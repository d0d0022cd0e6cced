#include "host/ScreenStrategies.h"

#include "host/CalculatorScreenStrategy.h"
#include "host/FormScreenStrategy.h"
#include "host/VerificationScreenStrategy.h"

namespace tessara::demo {

ScreenStrategies ScreenStrategies::standard() {
    ScreenStrategies set;
    set.add(std::make_unique<CalculatorScreenStrategy>());
    set.add(std::make_unique<VerificationScreenStrategy>());
    set.add(std::make_unique<FormScreenStrategy>());
    return set;
}

ScreenStrategy* ScreenStrategies::strategyFor(const QString& type) const {
    for (const auto& strategy : strategies_) {
        if (strategy->handles(type))
            return strategy.get();
    }
    return nullptr;
}

bool ScreenStrategies::drives(const QString& type) const {
    const ScreenStrategy* strategy = strategyFor(type);
    return strategy && strategy->drives();
}

} // namespace tessara::demo
