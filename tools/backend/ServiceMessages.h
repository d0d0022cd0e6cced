#pragma once

#include "tessara/kyc/signalling/SignalFrame.h"

#include <QByteArray>

namespace tessara {

// The text frames of the simulated verification service: each message as the client's own types
// encode it, except that numbers travel as JSON strings, as a real service writes them (the client
// refuses bare numbers in "rects", "position" and "ocrProgress").
class ServiceMessages {
public:
    static QByteArray encode(const SignalMessage& message);
};

} // namespace tessara
