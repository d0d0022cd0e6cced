#include "tessara/documents/FieldOption.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("id", &FieldOption::id),
    field("label", &FieldOption::label),
    field("value", &FieldOption::value),
    field("value2", &FieldOption::value2),
};
} // namespace

TESSARA_DEFINE_RECORD(FieldOption, kTable)

} // namespace tessara
