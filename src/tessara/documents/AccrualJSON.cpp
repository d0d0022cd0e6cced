#include "tessara/documents/AccrualJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("amount", &AccrualJSON::amount),
    field("balanceCode", &AccrualJSON::balanceCode),
    field("name", &AccrualJSON::name),
    field("type", &AccrualJSON::type),
};
} // namespace

TESSARA_DEFINE_RECORD(AccrualJSON, kTable)

} // namespace tessara
