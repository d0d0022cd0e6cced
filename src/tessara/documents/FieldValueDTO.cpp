#include "tessara/documents/FieldValueDTO.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("key", &FieldValueDTO::key),
    field("value", &FieldValueDTO::value),
};
} // namespace

TESSARA_DEFINE_RECORD(FieldValueDTO, kTable)

} // namespace tessara
