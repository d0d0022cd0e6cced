#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

namespace tessara {

// "nn-connected": the service takes frames from now on. The command alone; no other key is read,
// and it encodes as {"cmd":"nn-connected"}.
struct NNConnectedCommand {
    WSCommand cmd = WSCommand::nnConnected;

    friend bool operator==(const NNConnectedCommand&, const NNConnectedCommand&) = default;
};

} // namespace tessara
