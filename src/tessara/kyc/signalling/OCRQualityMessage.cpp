#include "tessara/kyc/signalling/OCRQualityMessage.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &OCRQualityMessage::cmd),
    field("msg", &OCRQualityMessage::msg),
};
} // namespace

TESSARA_DEFINE_RECORD(OCRQualityMessage, kTable)

} // namespace tessara
