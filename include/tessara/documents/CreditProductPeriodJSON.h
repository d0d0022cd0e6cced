#pragma once

#include "tessara/documents/Decimal.h"

namespace tessara {

// One number of periods a product offers, with its range of amounts. All keys required.
struct CreditProductPeriodJSON {
    Decimal maxPrincipal;
    Decimal minPrincipal;
    qint64 period = 0;

    friend bool operator==(const CreditProductPeriodJSON&, const CreditProductPeriodJSON&) = default;
};

} // namespace tessara
