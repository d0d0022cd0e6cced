#include "tessara/kyc/signalling/RemoveRectangle.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &RemoveRectangle::cmd),
};
} // namespace

TESSARA_DEFINE_RECORD(RemoveRectangle, kTable)

} // namespace tessara
