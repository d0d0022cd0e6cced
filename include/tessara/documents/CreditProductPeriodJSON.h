#pragma once

#include "tessara/documents/Decimal.h"

namespace tessara {

/// One number of periods a product offers, with its range of amounts. All keys required.
struct CreditProductPeriodJSON {
    Decimal maxPrincipal; ///< Largest amount for this number of periods.
    Decimal minPrincipal; ///< Smallest amount for this number of periods.
    qint64 period = 0;    ///< The number of periods.

    /// Field-by-field equality.
    friend bool operator==(const CreditProductPeriodJSON&, const CreditProductPeriodJSON&) = default;
};

} // namespace tessara
