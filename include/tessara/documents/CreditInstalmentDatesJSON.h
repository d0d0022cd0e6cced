#pragma once

#include <QDate>
#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// The dates on which the first instalment may fall. `productId` is a string here on purpose.
// Dates travel as "yyyy-MM-dd" texts. An unreadable default date decodes as absent; an unreadable
// element of availableDates is a fatal error. availableDates is held in ascending order.
struct CreditInstalmentDatesJSON {
    QString productId;
    std::optional<QDate> defaultFirstInstallmentDate;
    std::vector<QDate> availableDates;

    friend bool operator==(const CreditInstalmentDatesJSON&, const CreditInstalmentDatesJSON&) = default;
};

} // namespace tessara
