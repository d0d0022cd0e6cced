#include "tessara/kyc/signalling/OCRActionSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &OCRActionSignal::cmd),
    field("type", &OCRActionSignal::type),
};
} // namespace

TESSARA_DEFINE_RECORD(OCRActionSignal, kTable)

} // namespace tessara
