#include "tessara/kyc/signalling/OCRProgressSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &OCRProgressSignal::cmd),
    field("current", &OCRProgressSignal::current, numberTextOrFatal),
    field("max", &OCRProgressSignal::max, numberTextOrFatal),
};
} // namespace

TESSARA_DEFINE_RECORD(OCRProgressSignal, kTable)

} // namespace tessara
