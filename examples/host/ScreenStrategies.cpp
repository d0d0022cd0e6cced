#include "host/ScreenStrategies.h"

#include "host/FormScreenStrategy.h"
#include "host/UnsupportedScreenStrategy.h"

namespace tessara::demo {

ScreenStrategies ScreenStrategies::standard() {
    ScreenStrategies set;
    // The calculator and the identity check get their own strategies when their screens land.
    set.add(std::make_unique<UnsupportedScreenStrategy>(
        QStringList{QStringLiteral("CREDIT_CALCULATOR"), QStringLiteral("KYC_ID")}));
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
