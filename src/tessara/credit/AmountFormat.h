#pragma once

#include "tessara/documents/Decimal.h"
#include "tessara/documents/FieldJSON.h"

#include <QLocale>
#include <QString>
#include <optional>
#include <vector>

namespace tessara {

// How the calculator writes amounts. A step may carry a "SUM_FORMAT" field whose label is
// "{N}<symbol>": N fraction digits and the currency symbol, spaces included. Without it
// amounts are written in the locale's currency format for BGN.
class AmountFormat {
public:
    // Reads the first "SUM_FORMAT" field of `fields`. No such field, no label, or a label
    // that does not begin with "{" and a number gives no format. An empty label, or one
    // without a symbol after the "}", ends the program.
    static std::optional<AmountFormat> configure(const std::vector<FieldJSON>& fields);

    AmountFormat(int fractionDigits, QString currencySymbol);

    int fractionDigits() const { return fractionDigits_; }
    QString currencySymbol() const { return currencySymbol_; }

    // `value` with exactly fractionDigits digits (halves to even, as currency formatters
    // round), grouped and placed around the symbol as `locale` writes currency; a space the
    // symbol carries stands in for the locale's own space on that side.
    QString format(const Decimal& value, const QLocale& locale = QLocale()) const;

    // `value` through `format` when there is one, otherwise as BGN in `locale`: two
    // fraction digits and the locale's own symbol when its currency is BGN, the code
    // "BGN" elsewhere.
    static QString formatAmount(const std::optional<AmountFormat>& format, const Decimal& value,
                                const QLocale& locale = QLocale());

private:
    int fractionDigits_;
    QString currencySymbol_;
};

} // namespace tessara
