#pragma once

#include "tessara/documents/AccrualJSON.h"
#include "tessara/documents/Decimal.h"

#include <vector>

namespace tessara {

// A calculated instalment plan. All keys required; the wire keys of instalmentAmount and accruals
// are "installmentAmount" and "acruals", as the backend spells them.
struct CreditInstalmentDetailsJSON {
    Decimal selectedCreditAmount;
    qint64 selectedPeriod = 0;
    Decimal instalmentAmount;
    Decimal totalDueAmount;
    std::vector<AccrualJSON> accruals;

    friend bool operator==(const CreditInstalmentDetailsJSON&, const CreditInstalmentDetailsJSON&) = default;
};

} // namespace tessara
