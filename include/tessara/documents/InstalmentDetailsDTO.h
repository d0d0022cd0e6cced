#pragma once

#include "tessara/documents/Decimal.h"

namespace tessara {

// Body of POST "/custom/credit/installmentDetails".
struct InstalmentDetailsDTO {
    qint64 productId = 0;
    Decimal amount;
    qint64 periods = 0;

    friend bool operator==(const InstalmentDetailsDTO&, const InstalmentDetailsDTO&) = default;
};

} // namespace tessara
