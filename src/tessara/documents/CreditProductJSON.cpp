#include "tessara/documents/CreditProductJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("annualExpenseRate", &CreditProductJSON::annualExpenseRate),
    field("annualInterestRate", &CreditProductJSON::annualInterestRate),
    field("maxPrincipal", &CreditProductJSON::maxPrincipal),
    field("minPrincipal", &CreditProductJSON::minPrincipal),
    field("periods", &CreditProductJSON::periods),
    field("productId", &CreditProductJSON::productId),
    field("productName", &CreditProductJSON::productName),
    field("productPeriodicity", &CreditProductJSON::productPeriodicity),
    field("productType", &CreditProductJSON::productType),
    field("step", &CreditProductJSON::step),
};
} // namespace

TESSARA_DEFINE_RECORD(CreditProductJSON, kTable)

// The list endpoint answers with a bare JSON array.
TESSARA_DEFINE_JSON_CODING(std::vector<CreditProductJSON>)

} // namespace tessara
