#pragma once

#include "tessara/documents/CreditProductPeriodJSON.h"
#include "tessara/documents/Decimal.h"

#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// One credit product. Rates and "step" are optional, everything else required.
struct CreditProductJSON {
    std::optional<Decimal> annualExpenseRate;
    std::optional<Decimal> annualInterestRate;
    Decimal maxPrincipal;
    Decimal minPrincipal;
    std::vector<CreditProductPeriodJSON> periods;
    qint64 productId = 0;
    QString productName;
    QString productPeriodicity;
    QString productType;
    std::optional<qint64> step;

    friend bool operator==(const CreditProductJSON&, const CreditProductJSON&) = default;
};

} // namespace tessara
