#include "tessara/kyc/signalling/JoinSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &JoinSignal::cmd),
    field("from", &JoinSignal::from),
    field("fromMobile", &JoinSignal::fromMobile),
    field("techCheck", &JoinSignal::techCheck),
};
} // namespace

TESSARA_DEFINE_RECORD(JoinSignal, kTable)

} // namespace tessara
