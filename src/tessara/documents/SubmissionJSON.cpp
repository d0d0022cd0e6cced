#include "tessara/documents/SubmissionJSON.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("creditProducts", &SubmissionJSON::creditProducts),
    field("directionId", &SubmissionJSON::directionId),
    field("fields", &SubmissionJSON::fields),
    field("instalmentDetails", &SubmissionJSON::instalmentDetails),
    field("name", &SubmissionJSON::name),
    field("processId", &SubmissionJSON::processId),
    field("settings", &SubmissionJSON::settings),
    field("submissionId", &SubmissionJSON::submissionId),
    field("type", &SubmissionJSON::type),
};
} // namespace

TESSARA_DEFINE_RECORD(SubmissionJSON, kTable)

// The list endpoint answers with a bare JSON array.
TESSARA_DEFINE_JSON_CODING(std::vector<SubmissionJSON>)

} // namespace tessara
