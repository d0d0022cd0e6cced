#include "tessara/kyc/signalling/OverlayRectangle.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &OverlayRectangle::cmd),
    field("color", &OverlayRectangle::color),
    field("h", &OverlayRectangle::h, numberTextOrZero),
    field("w", &OverlayRectangle::w, numberTextOrZero),
    field("x", &OverlayRectangle::x, numberTextOrZero),
    field("y", &OverlayRectangle::y, numberTextOrZero),
};
} // namespace

TESSARA_DEFINE_RECORD(OverlayRectangle, kTable)

} // namespace tessara
