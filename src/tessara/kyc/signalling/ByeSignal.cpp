#include "tessara/kyc/signalling/ByeSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &ByeSignal::cmd),
    field("from", &ByeSignal::from),
};
} // namespace

TESSARA_DEFINE_RECORD(ByeSignal, kTable)

} // namespace tessara
