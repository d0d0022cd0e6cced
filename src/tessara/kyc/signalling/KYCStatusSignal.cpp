#include "tessara/kyc/signalling/KYCStatusSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &KYCStatusSignal::cmd),
    field("type", &KYCStatusSignal::type),
};
} // namespace

TESSARA_DEFINE_RECORD(KYCStatusSignal, kTable)

} // namespace tessara
