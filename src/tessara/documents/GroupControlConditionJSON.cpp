#include "tessara/documents/GroupControlConditionJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("fieldKey", &GroupControlConditionJSON::fieldKey),
    field("hide", &GroupControlConditionJSON::shouldHide),
    field("operator", &GroupControlConditionJSON::groupOperator),
    field("sectionKey", &GroupControlConditionJSON::sectionKey),
    field("value", &GroupControlConditionJSON::value),
};
} // namespace

TESSARA_DEFINE_RECORD(GroupControlConditionJSON, kTable)

} // namespace tessara
