#pragma once

#include "tessara/kyc/signalling/SignalCoding.h"
#include "tessara/kyc/signalling/TSRWebSocketProviderDelegate.h"
#include "tessara/platform/Logging.h"

#include <QByteArray>

namespace tessara {

// The one WebSocket of a verification step, as the signalling client sees it.
class TSRWebSocketProvider {
public:
    virtual ~TSRWebSocketProvider() = default;

    // The delegate is held weakly: it must outlive the socket or be cleared first.
    virtual void setDelegate(TSRWebSocketProviderDelegate* delegate) = 0;
    virtual TSRWebSocketProviderDelegate* delegate() const = 0;

    // Opens the socket; the delegate hears socketDidConnect once it is open.
    virtual void connect() = 0;
    // Closes with code 1000 and tears down for good: a disconnected socket stays closed.
    virtual void disconnect() = 0;
    // Sends one message as it is, binary (the video units) or text; from any thread. Nothing is sent,
    // and nothing reported, while no socket is open.
    virtual void sendBytes(QByteArray bytes, bool binary = true) = 0;

    // Encodes one message and sends it, as a binary frame unless told otherwise; from any thread.
    template <WSSendable Message> void send(const Message& message, bool binary = true) {
        auto bytes = encodeDocument<Message>(message);
        if (!bytes) {
            const std::string_view command = rawValueUtf8(message.cmd);
            qCCritical(lcWebSocket, "Could not encode: %.*s from %s", int(command.size()), command.data(),
                       qUtf8Printable(message.from));
            return;
        }
        sendBytes(std::move(*bytes), binary);
    }
};

} // namespace tessara
