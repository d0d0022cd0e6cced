#pragma once

#include "tessara/documents/AccrualJSON.h"
#include "tessara/documents/Decimal.h"

#include <vector>

namespace tessara {

/// A calculated instalment plan. All keys required; the wire keys of instalmentAmount and accruals
/// are "installmentAmount" and "acruals", as the backend spells them.
struct CreditInstalmentDetailsJSON {
    Decimal selectedCreditAmount;      ///< The amount the plan was calculated for.
    qint64 selectedPeriod = 0;         ///< The number of periods it was calculated for.
    Decimal instalmentAmount;          ///< What one instalment costs.
    Decimal totalDueAmount;            ///< What the whole credit costs.
    std::vector<AccrualJSON> accruals; ///< The lines the total is made of.

    /// Field-by-field equality.
    friend bool operator==(const CreditInstalmentDetailsJSON&, const CreditInstalmentDetailsJSON&) = default;
};

} // namespace tessara
