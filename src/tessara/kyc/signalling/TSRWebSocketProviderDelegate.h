#pragma once

#include <QByteArray>
#include <QString>

namespace tessara {

class TSRWebSocketProvider;

// What a socket tells the one who reads it (the signalling client). Every call arrives on the
// socket's own thread, except socketDidDisconnect, which arrives on the thread that called
// `disconnect`.
class TSRWebSocketProviderDelegate {
public:
    virtual ~TSRWebSocketProviderDelegate() = default;

    // The socket opened (again, after a reconnect).
    virtual void socketDidConnect(TSRWebSocketProvider& socket) = 0;
    // The link failed; the socket tries again one second later. `error` is the failure in words.
    virtual void socketDidFail(TSRWebSocketProvider& socket, const QString& error) = 0;
    // One text frame from the service.
    virtual void socketDidReceiveText(TSRWebSocketProvider& socket, const QString& text) = 0;
    // Binary frames from the service carry nothing the client reads; the socket never calls this.
    virtual void socketDidReceiveData(TSRWebSocketProvider&, const QByteArray&) {}
    // `disconnect` ran: the link is down for good. Called just before the socket forgets its delegate.
    virtual void socketDidDisconnect(TSRWebSocketProvider& socket) = 0;
};

} // namespace tessara
