#include "tessara/documents/UploadFileDTO.h"

#include "tessara/documents/RecordTable.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("fromDirectionId", &UploadFileDTO::fromDirectionId),
    field("key", &UploadFileDTO::key),
    field("submissionId", &UploadFileDTO::submissionId),
};
} // namespace

TESSARA_DEFINE_RECORD(UploadFileDTO, kTable)

} // namespace tessara
