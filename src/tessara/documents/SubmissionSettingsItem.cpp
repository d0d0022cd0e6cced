#include "tessara/documents/SubmissionSettingsItem.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("itemValue", &SubmissionSettingsItem::itemValue),
    field("name", &SubmissionSettingsItem::name),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmissionSettingsItem, kTable)

} // namespace tessara
