#pragma once

#include "tessara/documents/Decimal.h"

#include <QString>

namespace tessara {

/// One accrual line of an instalment plan. All keys required.
struct AccrualJSON {
    Decimal amount;      ///< The line's amount in the product's currency.
    QString balanceCode; ///< The backend's code of the line.
    QString name;        ///< Shown to the user.
    qint64 type = 0;     ///< The backend's kind of the line.

    /// Field-by-field equality.
    friend bool operator==(const AccrualJSON&, const AccrualJSON&) = default;
};

} // namespace tessara
