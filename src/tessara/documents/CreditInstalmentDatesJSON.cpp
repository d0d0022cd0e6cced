#include "tessara/documents/CreditInstalmentDatesJSON.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/documents/SpecialCodecs.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("availableDates", &CreditInstalmentDatesJSON::availableDates, availableDays),
    field("defaultFirstInstallmentDate", &CreditInstalmentDatesJSON::defaultFirstInstallmentDate,
          dayOrAbsent),
    field("productId", &CreditInstalmentDatesJSON::productId),
};
} // namespace

TESSARA_DEFINE_RECORD(CreditInstalmentDatesJSON, kTable)

} // namespace tessara
