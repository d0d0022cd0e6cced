#pragma once

#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"
#include "tessara/documents/Decimal.h"
#include "tessara/documents/FieldJSON.h"
#include "tessara/documents/FieldValueDTO.h"

#include <QDate>
#include <optional>
#include <vector>

namespace tessara {

// What the calculator has settled on, as it is submitted.
struct CalculatorSelection {
    Decimal amount;
    std::optional<CreditInstalmentDetailsJSON> instalmentDetails;
    std::optional<QDate> date;
    qint64 period = 0;
    std::optional<CreditProductJSON> product;
};

// The values a calculator step sends, one per special type in this fixed order: "AMOUNT",
// "INSTALLMENT_AMOUNT", "INSTALLMENT_DATE", "PERIODS", "PRODUCT_ID", "TOTAL_SUM". Each goes
// under the key of the first field with that special type; a type no field has is skipped.
// Amounts travel as plain decimal text, the date as whole milliseconds since 1970 of its
// local midnight. A field without a key, or a value the selection lacks, ends the program.
class CalculatorValues {
public:
    CalculatorValues() = delete;

    static std::vector<FieldValueDTO> fieldValues(const std::vector<FieldJSON>& fields,
                                                  const CalculatorSelection& selection);
};

} // namespace tessara
