#include "tessara/steps/StepRouter.h"

#include "tessara/credit/TSRCreditCalculatorController.h"
#include "tessara/form/TSRFormController.h"
#include "tessara/kyc/TSRNativeKYCController.h"

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

constexpr char kKycType[] = "KYC_ID";
constexpr char kCreditType[] = "CREDIT_CALCULATOR";

struct Route {
    const char* type;
    std::unique_ptr<TSRViewController> (*make)(const SubmissionJSON&);
};

constexpr std::array kRoutes{
    Route{kKycType, &makeVerification},
    Route{kCreditType, &make<TSRCreditCalculatorController>},
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
