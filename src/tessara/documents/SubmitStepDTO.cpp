#include "tessara/documents/SubmitStepDTO.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("directionId", &SubmitStepDTO::directionId),
    field("fields", &SubmitStepDTO::fields),
    field("fromDirectionId", &SubmitStepDTO::fromDirectionId),
    field("fromFlowFieldId", &SubmitStepDTO::fromFlowFieldId),
    field("submissionId", &SubmitStepDTO::submissionId),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmitStepDTO, kTable)

} // namespace tessara
