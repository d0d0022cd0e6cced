#pragma once

#include "tessara/kyc/signalling/SignalFrame.h"
#include "tessara/kyc/signalling/TSRNativeSignallingDelegate.h"
#include "tessara/kyc/signalling/TSRSignallingClient.h"

#include <QUrl>
#include <atomic>

namespace tessara {

// Sits between the step's socket and the verification screen: sends the join whenever the socket
// opens, reads every text frame on the socket's thread and hands each message to the screen on the
// main thread, and sends the bye at the end. Frames that are no JSON object, or whose "cmd" is no
// string, end the program; a message that does not decode costs one log line.
class TSRNativeSignallingClient : public TSRSignallingClient, public TSRWebSocketProviderDelegate {
    Q_OBJECT

public:
    // Takes the socket and becomes its delegate. Make and destroy it on the main thread.
    explicit TSRNativeSignallingClient(std::unique_ptr<TSRWebSocketProvider> webSocket,
                                       QObject* parent = nullptr);
    // Closes the socket if the step did not, and waits for its thread before the client goes.
    ~TSRNativeSignallingClient() override;

    // The socket address of a step: its stream URL with the path "mobile/h264" appended.
    static QUrl socketUrl(const QUrl& streamUrl);

    // Held weakly (see TSRNativeSignallingDelegate); may be set from the main thread at any time.
    void setDelegate(TSRNativeSignallingDelegate* delegate) { delegate_.store(delegate); }
    TSRNativeSignallingDelegate* delegate() const { return delegate_.load(); }

    // The end of the step: sends the bye, closes the socket and lets it go. Main thread.
    void sendByeAndDisconnect();

    void socketDidConnect(TSRWebSocketProvider& socket) override;
    void socketDidFail(TSRWebSocketProvider& socket, const QString& error) override;
    void socketDidReceiveText(TSRWebSocketProvider& socket, const QString& text) override;
    void socketDidDisconnect(TSRWebSocketProvider& socket) override;

private:
    void handOver(TSRNativeSignallingDelegate& delegate, SignalMessage message);

    std::atomic<TSRNativeSignallingDelegate*> delegate_{nullptr};
};

} // namespace tessara
