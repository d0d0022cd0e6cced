#pragma once

#include "tessara/documents/CreditProductPeriodJSON.h"
#include "tessara/documents/Decimal.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

/// One credit product. Rates and "step" are optional, everything else required.
struct CreditProductJSON {
    std::optional<Decimal> annualExpenseRate;     ///< In percent.
    std::optional<Decimal> annualInterestRate;    ///< In percent.
    Decimal maxPrincipal;                         ///< Largest amount over all periods.
    Decimal minPrincipal;                         ///< Smallest amount over all periods.
    std::vector<CreditProductPeriodJSON> periods; ///< The numbers of periods offered.
    qint64 productId = 0;                         ///< Sent back in the plan and date requests.
    QString productName;                          ///< Shown to the user.
    QString productPeriodicity;                   ///< The length of one period, in the backend's words.
    QString productType;                          ///< The backend's kind of product.
    std::optional<qint64> step;                   ///< Granularity of the amount slider; absent: one unit.

    /// Field-by-field equality.
    friend bool operator==(const CreditProductJSON&, const CreditProductJSON&) = default;
};

} // namespace tessara
