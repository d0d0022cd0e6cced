#include "backend/AnnuityCalculator.h"

#include <gtest/gtest.h>

using tessara::AnnuityCalculator;
using tessara::Decimal;

namespace {

Decimal dec(const char* text) {
    return *Decimal::fromString(std::string_view(text));
}

struct PlanCase {
    const char* principal;
    const char* rate;
    qint64 periods;
    int periodsPerYear;
    const char* instalment;
    const char* totalInterest;
};

// Expected values worked out independently with base-ten arithmetic at 50 digits:
// payment = P r / (1 - (1 + r)^-n) rounded half up to cents; each period's interest is the open
// balance times r rounded to cents; the last instalment clears the balance.
const PlanCase kPlans[] = {
    {"10000", "12", 12, 12, "888.49", "661.86"},  {"10000", "11.9", 12, 12, "888.02", "656.23"},
    {"5000", "15.5", 18, 12, "313.10", "635.81"}, {"2500.50", "11.9", 24, 12, "117.59", "321.68"},
    {"1000", "0", 3, 12, "333.33", "0"},          {"30000", "11.9", 60, 12, "665.82", "9949.10"},
};

} // namespace

TEST(AnnuityCalculator, MatchesIndependentlyComputedPlans) {
    for (const PlanCase& c : kPlans) {
        SCOPED_TRACE(std::string(c.principal) + " at " + c.rate + "% for " + std::to_string(c.periods));
        const auto plan = AnnuityCalculator::plan(dec(c.principal), dec(c.rate), c.periods, c.periodsPerYear);
        ASSERT_TRUE(plan.has_value());
        EXPECT_EQ(plan->instalment, dec(c.instalment)) << plan->instalment.description().toStdString();
        EXPECT_EQ(plan->totalInterest, dec(c.totalInterest))
            << plan->totalInterest.description().toStdString();
        EXPECT_EQ(plan->totalDue, dec(c.principal) + dec(c.totalInterest));
        EXPECT_EQ(plan->principal, dec(c.principal)); // exactly the amount asked for
    }
}

TEST(AnnuityCalculator, ScheduleRepaysThePrincipalExactly) {
    for (const PlanCase& c : kPlans) {
        const auto plan = AnnuityCalculator::plan(dec(c.principal), dec(c.rate), c.periods, c.periodsPerYear);
        ASSERT_TRUE(plan.has_value());
        ASSERT_EQ(qint64(plan->schedule.size()), c.periods);
        Decimal principalSum;
        Decimal paymentSum;
        for (const auto& row : plan->schedule) {
            principalSum += row.principal;
            paymentSum += row.payment;
            EXPECT_EQ(row.payment, row.principal + row.interest);
            EXPECT_LE(row.payment.scale(), 2);
        }
        EXPECT_EQ(principalSum, dec(c.principal));
        EXPECT_EQ(paymentSum, plan->totalDue);
        EXPECT_TRUE(plan->schedule.back().balanceAfter.isZero());
        // Every instalment but the last is the regular one; the last differs by rounding only.
        for (size_t i = 0; i + 1 < plan->schedule.size(); ++i)
            EXPECT_EQ(plan->schedule[i].payment, plan->instalment);
        EXPECT_LT((plan->schedule.back().payment - plan->instalment).abs(), dec("1"));
    }
}

TEST(AnnuityCalculator, RefusesPlansThatMakeNoSense) {
    EXPECT_FALSE(AnnuityCalculator::plan(dec("0"), dec("10"), 12));
    EXPECT_FALSE(AnnuityCalculator::plan(dec("-100"), dec("10"), 12));
    EXPECT_FALSE(AnnuityCalculator::plan(dec("1000"), dec("-1"), 12));
    EXPECT_FALSE(AnnuityCalculator::plan(dec("1000"), dec("10"), 0));
    EXPECT_FALSE(AnnuityCalculator::plan(dec("1000"), dec("10"), 1201));
}
