#pragma once

#include "tessara/kyc/signalling/WSCommand.h"

#include <QString>

namespace tessara {

// Sent when the socket opens: announces this user to the service.
struct JoinSignal {
    WSCommand cmd = WSCommand::join;
    QString from;
    bool fromMobile = false;
    bool techCheck = false;

    friend bool operator==(const JoinSignal&, const JoinSignal&) = default;
};

} // namespace tessara
