#pragma once

// A WebSocket server on 127.0.0.1 for tests that must see the wire: every frame the client sends
// is recorded with its kind and bytes, pings included (which a QWebSocketServer answers without
// telling anyone), and the server can send any frame, close with any code (1006 too) or drop the
// TCP connection without a close frame.
//
//   LoopbackWebSocketServer server;                // listens at once
//   socket.connect(server.url("/mobile/h264"));
//   ASSERT_TRUE(server.waitForFrames(RecordedFrame::Kind::binary, 1));
//   server.sendText(R"({"cmd":"nn-connected"})");  // to the newest connection
//   server.dropConnection();                       // the client sees the link fail
//
// Pings are answered with a pong carrying the same bytes; a close from the client is answered with
// the same code and the connection then closed. Runs on the thread that made it and needs that
// thread's event loop (QTest::qWaitFor spins it).

#include "support/RecordedFrame.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTcpServer>
#include <QUrl>
#include <functional>
#include <memory>
#include <vector>

class QTcpSocket;

namespace tessara::test {

class LoopbackWebSocketServer : public QObject {
    Q_OBJECT

public:
    explicit LoopbackWebSocketServer(QObject* parent = nullptr);
    ~LoopbackWebSocketServer() override;

    // "ws://127.0.0.1:<port>" followed by `path`.
    QUrl url(const QString& path = QStringLiteral("/")) const;

    // When false, connections are accepted but the upgrade request is never answered.
    void setAnswersHandshakes(bool answers) { answersHandshakes_ = answers; }

    // TCP connections accepted so far, and the raw upgrade requests received (one per connection).
    int connectionCount() const { return int(connections_.size()); }
    const std::vector<QByteArray>& handshakeRequests() const { return handshakeRequests_; }
    // The value of a header of the upgrade request of connection `index`.
    QByteArray handshakeHeader(int index, const QByteArray& name) const;

    const std::vector<RecordedFrame>& frames() const { return frames_; }
    std::vector<RecordedFrame> frames(RecordedFrame::Kind kind) const;
    // Spins the event loop until `count` frames of `kind` have arrived in total.
    bool waitForFrames(RecordedFrame::Kind kind, int count, int timeoutMs = 5000);
    // True while the newest connection is upgraded and open.
    bool isOpen() const;
    // Milliseconds since the server started, the clock of RecordedFrame::atMs.
    qint64 elapsedMs() const { return clock_.elapsed(); }

    // Frames to the newest open connection.
    void sendText(const QByteArray& utf8);
    void sendBinary(const QByteArray& bytes);
    // A close frame with `code`; the connection closes when the client answers it.
    void sendClose(quint16 code);
    // Ends the newest connection's TCP link at once, with no close frame.
    void dropConnection();

Q_SIGNALS:
    void frameReceived(int index);

private:
    struct Connection;
    void onNewConnection();
    void onReadyRead(Connection* connection);
    bool readHandshake(Connection* connection);
    bool readFrame(Connection* connection);
    Connection* newest() const;

    QTcpServer server_;
    QElapsedTimer clock_;
    bool answersHandshakes_ = true;
    std::vector<std::unique_ptr<Connection>> connections_;
    std::vector<QByteArray> handshakeRequests_;
    std::vector<RecordedFrame> frames_;
};

} // namespace tessara::test
