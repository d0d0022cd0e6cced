#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

#include <QString>

namespace tessara {

// Sent at the end of the step, just before the socket is closed.
struct ByeSignal {
    WSCommand cmd = WSCommand::bye;
    QString from;

    friend bool operator==(const ByeSignal&, const ByeSignal&) = default;
};

} // namespace tessara
