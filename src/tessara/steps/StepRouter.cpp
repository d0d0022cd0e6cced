#include "tessara/steps/StepRouter.h"

#include "tessara/form/TSRFormController.h"
#include "tessara/kyc/TSRNativeKYCController.h"
#include "tessara/platform/FatalError.h"

#include <array>

namespace tessara {

namespace {

template <typename Screen> std::unique_ptr<TSRViewController> make(const SubmissionJSON&) {
    return std::make_unique<Screen>();
}

// The verification screen checks and uses its document as it is made.
std::unique_ptr<TSRViewController> makeVerification(const SubmissionJSON& document) {
    return std::make_unique<TSRNativeKYCController>(document);
}

// A step kind whose screen this build lacks; showing it as a form would send the backend
// values it never asked for, so the program says so and stops.
template <const char* Type, const char* Screen>
std::unique_ptr<TSRViewController> missing(const SubmissionJSON&) {
    fatalError(QStringLiteral("The %1 screen is not available in this build; a %2 step cannot be shown.")
                   .arg(QLatin1String(Screen), QLatin1String(Type)));
}

constexpr char kKycType[] = "KYC_ID";
constexpr char kCreditType[] = "CREDIT_CALCULATOR";
constexpr char kCreditScreen[] = "TSRCreditCalculatorController";

struct Route {
    const char* type;
    std::unique_ptr<TSRViewController> (*make)(const SubmissionJSON&);
};

constexpr std::array kRoutes{
    Route{kKycType, &makeVerification},
    Route{kCreditType, &missing<kCreditType, kCreditScreen>},
};

} // namespace

std::unique_ptr<TSRViewController> StepRouter::makeScreen(const SubmissionJSON& document) {
    const QString type = document.type.value_or(QString());
    for (const Route& route : kRoutes) {
        if (type == QLatin1String(route.type))
            return route.make(document);
    }
    return make<TSRFormController>(document);
}

} // namespace tessara
