#pragma once

#include "tessara/documents/Decimal.h"

#include <QString>

namespace tessara {

// One accrual line of an instalment plan. All keys required.
struct AccrualJSON {
    Decimal amount;
    QString balanceCode;
    QString name;
    qint64 type = 0;

    friend bool operator==(const AccrualJSON&, const AccrualJSON&) = default;
};

} // namespace tessara
