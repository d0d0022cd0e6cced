#include "tessara/steps/StepRouter.h"

#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/platform/FatalError.h"

#include <array>

namespace tessara {

namespace {

template <typename Screen> std::unique_ptr<TSRViewController> make() {
    return std::make_unique<Screen>();
}

// A step kind whose screen this build lacks; showing it as a form would send the backend
// values it never asked for, so the program says so and stops.
template <const char* Type, const char* Screen> std::unique_ptr<TSRViewController> missing() {
    fatalError(QStringLiteral("The %1 screen is not available in this build; a %2 step cannot be shown.")
                   .arg(QLatin1String(Screen), QLatin1String(Type)));
}

constexpr char kKycType[] = "KYC_ID";
constexpr char kKycScreen[] = "TSRNativeKYCController";
constexpr char kCreditType[] = "CREDIT_CALCULATOR";

struct Route {
    const char* type;
    std::unique_ptr<TSRViewController> (*make)();
};

constexpr std::array kRoutes{
    Route{kKycType, &missing<kKycType, kKycScreen>},
    Route{kCreditType, &make<TSRCreditCalculatorController>},
};

} // namespace

std::unique_ptr<TSRViewController> StepRouter::makeScreen(const QString& type) {
    for (const Route& route : kRoutes) {
        if (type == QLatin1String(route.type))
            return route.make();
    }
    return make<TSRFormController>();
}

} // namespace tessara
