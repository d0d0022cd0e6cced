#pragma once

#include "tessara/documents/Decimal.h"

namespace tessara {

/// Body of POST "/custom/credit/installmentDetails".
struct InstalmentDetailsDTO {
    qint64 productId = 0; ///< CreditProductJSON::productId.
    Decimal amount;       ///< The amount the user chose.
    qint64 periods = 0;   ///< The number of periods the user chose.

    /// Field-by-field equality.
    friend bool operator==(const InstalmentDetailsDTO&, const InstalmentDetailsDTO&) = default;
};

} // namespace tessara
