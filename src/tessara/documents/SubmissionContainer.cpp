#include "tessara/documents/SubmissionContainer.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
// The wrapped document sits under "direction", not under the member's name.
constexpr RecordTable kTable{
    field("direction", &SubmissionContainer::submission),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmissionContainer, kTable)

} // namespace tessara
