#include "tessara/kyc/signalling/NNConnectedCommand.h"

#include "tessara/documents/RecordTable.h"
#include "tessara/kyc/signalling/SignalCoding.h"

namespace tessara {

namespace {
constexpr RecordTable kTable{
    field("cmd", &NNConnectedCommand::cmd),
};
} // namespace

TESSARA_DEFINE_RECORD(NNConnectedCommand, kTable)

} // namespace tessara
