#include "backend/AnnuityCalculator.h"

#include <cmath>
#include <cstdio>

namespace tessara {

namespace {

constexpr int kCents = 2;

// The annuity factor r / (1 - (1 + r)^-n) for a periodic rate r. The power has no exact decimal
// form, so it is taken in long double (64-bit mantissa, about 19 digits) and handed over as a
// decimal text of 21 significant digits. The instalment is that factor times the exact principal,
// rounded to cents: for any loan below ten billion, the factor's error moves the product by far
// less than half a cent, so the cents come out as an exact computation would give them.
Decimal annuityFactor(const Decimal& periodicRate, qint64 periods) {
    const long double rate = std::strtold(periodicRate.toStdString().c_str(), nullptr);
    const long double factor = rate / (1.0L - std::pow(1.0L + rate, -static_cast<long double>(periods)));
    char text[64];
    std::snprintf(text, sizeof text, "%.21Lg", factor);
    // Always a plain finite number here: the rate is positive and the periods at least one.
    return *Decimal::fromString(std::string_view(text));
}

} // namespace

std::optional<AnnuityPlan> AnnuityCalculator::plan(const Decimal& principal, const Decimal& annualRatePercent,
                                                   qint64 periods, int periodsPerYear) {
    if (principal <= Decimal() || annualRatePercent < Decimal() || periods < 1 || periods > 1200 ||
        periodsPerYear < 1)
        return std::nullopt;

    // Percent per year to a fraction per period: divide by 100 * periodsPerYear.
    const Decimal divisor = Decimal::fromInteger(100LL * periodsPerYear);
    const Decimal periodicRate = *annualRatePercent.divided(divisor);

    AnnuityPlan plan;
    plan.principal = principal;
    plan.periods = periods;
    if (periodicRate.isZero())
        plan.instalment = principal.divided(Decimal::fromInteger(periods))->rounded(kCents);
    else
        plan.instalment = (principal * annuityFactor(periodicRate, periods)).rounded(kCents);

    Decimal balance = principal;
    for (qint64 number = 1; number <= periods; ++number) {
        AnnuityInstalment row;
        row.number = number;
        // Interest on the open balance; computed from the exact product so only one rounding occurs.
        row.interest = (balance * annualRatePercent).divided(divisor)->rounded(kCents);
        const bool last = number == periods;
        row.principal = last ? balance : plan.instalment - row.interest;
        // A short plan at a high rate can have its regular payment cover less than the interest of
        // a period only through rounding; never let the balance grow or go below zero.
        if (row.principal < Decimal())
            row.principal = Decimal();
        if (balance < row.principal)
            row.principal = balance;
        row.payment = row.principal + row.interest;
        balance -= row.principal;
        row.balanceAfter = balance;
        plan.totalInterest += row.interest;
        plan.schedule.push_back(row);
    }
    plan.totalDue = principal + plan.totalInterest;
    return plan;
}

} // namespace tessara
