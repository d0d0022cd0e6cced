#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

namespace tessara {

/// The dates on which the first instalment may fall. `productId` is a string here on purpose.
/// Dates travel as "yyyy-MM-dd" texts. An unreadable default date decodes as absent; an unreadable
/// element of availableDates is a fatal error. availableDates is held in ascending order.
struct CreditInstalmentDatesJSON {
    QString productId;                                ///< The product the dates are for.
    std::optional<QDate> defaultFirstInstallmentDate; ///< The date chosen until the user picks one.
    std::vector<QDate> availableDates;                ///< Every date the user may pick.

    /// Field-by-field equality.
    friend bool operator==(const CreditInstalmentDatesJSON&, const CreditInstalmentDatesJSON&) = default;
};

} // namespace tessara
