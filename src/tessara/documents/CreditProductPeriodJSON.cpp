#include "tessara/documents/CreditProductPeriodJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("maxPrincipal", &CreditProductPeriodJSON::maxPrincipal),
    field("minPrincipal", &CreditProductPeriodJSON::minPrincipal),
    field("period", &CreditProductPeriodJSON::period),
};
} // namespace

TESSARA_DEFINE_RECORD(CreditProductPeriodJSON, kTable)

} // namespace tessara
