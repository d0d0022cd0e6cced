#include "tessara/documents/SubmissionCreateDTO.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("callingServiceToken", &SubmissionCreateDTO::callingServiceToken),
    field("processId", &SubmissionCreateDTO::processId),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmissionCreateDTO, kTable)

} // namespace tessara
