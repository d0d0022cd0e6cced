#include "tessara/kyc/signalling/TrackingCoordinates.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &TrackingCoordinates::cmd),
    field("x", &TrackingCoordinates::x, numberTextOrZero),
    field("y", &TrackingCoordinates::y, numberTextOrZero),
};
} // namespace

TESSARA_DEFINE_RECORD(TrackingCoordinates, kTable)

} // namespace tessara
