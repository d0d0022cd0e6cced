#include "tessara/kyc/signalling/KYCStartCameraSignal.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &KYCStartCameraSignal::cmd),
    field("type", &KYCStartCameraSignal::type),
};
} // namespace

TESSARA_DEFINE_RECORD(KYCStartCameraSignal, kTable)

} // namespace tessara
