#include "tessara/documents/CreditInstalmentDetailsJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
// "acruals" and "installmentAmount" are the backend's spellings and must stay as they are.
constexpr RecordTable kTable{
    field("acruals", &CreditInstalmentDetailsJSON::accruals),
    field("installmentAmount", &CreditInstalmentDetailsJSON::instalmentAmount),
    field("selectedCreditAmount", &CreditInstalmentDetailsJSON::selectedCreditAmount),
    field("selectedPeriod", &CreditInstalmentDetailsJSON::selectedPeriod),
    field("totalDueAmount", &CreditInstalmentDetailsJSON::totalDueAmount),
};
} // namespace

TESSARA_DEFINE_RECORD(CreditInstalmentDetailsJSON, kTable)

} // namespace tessara
