#pragma once

#include "tessara/kyc/signalling/TSRWebSocketProvider.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>
#include <atomic>
#include <memory>
#include <set>

class QThread;
class QWebSocket;

namespace tessara {

// The verification step's WebSocket on a QWebSocket that lives on a thread of its own (the socket
// session queue): text frames are read and handed to the delegate there, and no other thread ever
// touches the QWebSocket. Keeps the link alive with a ping every 2 s (the timer runs on the main
// thread, the first ping leaves at once) and, after a failure or a close other than 1000/1001,
// connects again 1 s later, without limit.
//
// Create, connect, disconnect and destroy it on the main thread; `send`/`sendBytes` are safe from
// any thread. Destroying it closes the link if still open and waits (at most about a second) for the
// socket's thread to end; callers that send from other threads must have stopped first.
class TSRWebSocket : public QObject, public TSRWebSocketProvider {
    Q_OBJECT

public:
    static constexpr int PING_INTERVAL_MS = 2000;
    static constexpr int RECONNECT_DELAY_MS = 1000;
    static constexpr double TIMEOUT_INTERVAL = 60.0;
    // The largest text message handed to the delegate, in UTF-8 bytes. The service's messages
    // are small JSON; a larger one is dropped with a log line and the link stays open.
    static constexpr qsizetype MAX_TEXT_MESSAGE_BYTES = 1024 * 1024;
    // The largest frame or message the socket reads at all. Qt cannot skip what it does not
    // read, so past this it closes the link with 1009 (too big) at once, before buffering it;
    // the link is then connected again as after any abnormal close.
    static constexpr qsizetype MAX_INCOMING_BYTES = 16 * 1024 * 1024;

    // `url` may be ws(s) or http(s); http(s) is opened as ws(s).
    explicit TSRWebSocket(QUrl url, QObject* parent = nullptr);
    ~TSRWebSocket() override;

    const QUrl& url() const { return url_; }

    void setDelegate(TSRWebSocketProviderDelegate* delegate) override { delegate_.store(delegate); }
    TSRWebSocketProviderDelegate* delegate() const override { return delegate_.load(); }
    void connect() override;
    void disconnect() override;
    void sendBytes(QByteArray bytes, bool binary = true) override;

    // The time the opening handshake may take, and the longest silence (not even a pong) after which
    // an open link counts as failed; 60 s unless a test shortens it. Set it before `connect`.
    void setTimeoutInterval(double seconds) { timeoutMs_ = int(seconds * 1000.0); }

Q_SIGNALS:
    // For observers such as the command-line tool; emitted on the socket's thread, after the
    // delegate has heard of the event.
    void opened();
    void failed(const QString& error);
    void closed(int code);

private:
    // Run on the socket's thread only; they alone touch the members marked "session" below.
    void openOnSession();
    void sendOnSession(const QByteArray& bytes, bool binary);
    void pingOnSession();
    void closeOnSession();
    void finishOnSession();
    void onOpened(QWebSocket* socket);
    void onText(QWebSocket* socket, const QString& text);
    void onError(QWebSocket* socket);
    void onDisconnected(QWebSocket* socket);
    void failOnSession(QWebSocket* socket, const QString& words);
    void forget(QWebSocket* socket);

    void onSession(std::function<void()> work);
    bool isSessionThread() const;
    void startPingPong(); // main thread
    void stopPingPong();  // main thread
    void scheduleReconnect();

    const QUrl url_;
    const QString userAgent_;
    int timeoutMs_ = int(TIMEOUT_INTERVAL * 1000.0);
    std::atomic<TSRWebSocketProviderDelegate*> delegate_{nullptr};
    // Set once by `disconnect`; a reconnect still queued then finds it and does nothing.
    std::atomic<bool> disconnected_{false};
    std::unique_ptr<QThread> thread_;
    QObject* session_ = nullptr; // lives on thread_; parent of the session members below
    QTimer pingPongTimer_;       // main thread

    QWebSocket* socketTask_ = nullptr; // session: the live socket
    std::set<QWebSocket*> closing_;    // session: sockets finishing their close handshake
    QTimer* silenceTimer_ = nullptr;   // session
    bool finishing_ = false;           // session
};

} // namespace tessara
