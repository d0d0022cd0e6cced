#pragma once

#include "tessara/documents/Decimal.h"

#include <optional>
#include <vector>

namespace tessara {

// One row of a repayment schedule.
struct AnnuityInstalment {
    qint64 number = 0;
    Decimal payment; // principal + interest
    Decimal principal;
    Decimal interest;
    Decimal balanceAfter;
};

struct AnnuityPlan {
    Decimal principal; // exactly the amount asked for
    qint64 periods = 0;
    Decimal instalment; // the regular payment, in cents
    Decimal totalInterest;
    Decimal totalDue; // principal + totalInterest
    std::vector<AnnuityInstalment> schedule;
};

// Equal-instalment (annuity) repayment plans, in money rounded to cents.
class AnnuityCalculator {
public:
    // `annualRatePercent` is the nominal yearly rate in percent, spread evenly over
    // `periodsPerYear`. Each period's interest is charged on the open balance and rounded to
    // cents; the last instalment takes up what rounding left, so the principal parts add up to
    // the principal exactly. std::nullopt for a principal that is not positive, a negative rate,
    // or periods outside 1 to 1200.
    static std::optional<AnnuityPlan> plan(const Decimal& principal, const Decimal& annualRatePercent,
                                           qint64 periods, int periodsPerYear = 12);
};

} // namespace tessara
