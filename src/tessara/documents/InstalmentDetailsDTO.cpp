#include "tessara/documents/InstalmentDetailsDTO.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("amount", &InstalmentDetailsDTO::amount),
    field("periods", &InstalmentDetailsDTO::periods),
    field("productId", &InstalmentDetailsDTO::productId),
};
} // namespace

TESSARA_DEFINE_RECORD(InstalmentDetailsDTO, kTable)

} // namespace tessara
