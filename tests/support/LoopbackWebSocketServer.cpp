#include "support/LoopbackWebSocketServer.h"

#include <QCryptographicHash>
#include <QTcpSocket>
#include <QTest>

namespace tessara::test {

namespace {

using Kind = RecordedFrame::Kind;

Kind kindOf(int opcode) {
    const bool known = opcode <= 0x2 || (opcode >= 0x8 && opcode <= 0xA);
    return known ? Kind(opcode) : Kind::other;
}

// Server frames are never masked.
QByteArray frameBytes(Kind kind, const QByteArray& payload) {
    QByteArray frame;
    frame.append(char(0x80 | int(kind)));
    const quint64 size = quint64(payload.size());
    if (size < 126) {
        frame.append(char(size));
    } else if (size <= 0xFFFF) {
        frame.append(char(126));
        frame.append(char(size >> 8)).append(char(size & 0xFF));
    } else {
        frame.append(char(127));
        for (int shift = 56; shift >= 0; shift -= 8)
            frame.append(char((size >> shift) & 0xFF));
    }
    return frame + payload;
}

} // namespace

struct LoopbackWebSocketServer::Connection {
    int index = 0;
    std::unique_ptr<QTcpSocket> socket;
    QByteArray buffer;
    bool upgraded = false;
    bool closeSent = false;
};

LoopbackWebSocketServer::LoopbackWebSocketServer(QObject* parent)
    : QObject(parent) {
    clock_.start();
    connect(&server_, &QTcpServer::newConnection, this, &LoopbackWebSocketServer::onNewConnection);
    server_.listen(QHostAddress::LocalHost, 0);
}

LoopbackWebSocketServer::~LoopbackWebSocketServer() {
    for (auto& connection : connections_)
        connection->socket->disconnect(this);
}

QUrl LoopbackWebSocketServer::url(const QString& path) const {
    return QUrl(QStringLiteral("ws://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path));
}

QByteArray LoopbackWebSocketServer::handshakeHeader(int index, const QByteArray& name) const {
    if (index < 0 || size_t(index) >= handshakeRequests_.size())
        return {};
    for (const QByteArray& line : handshakeRequests_[size_t(index)].split('\n')) {
        const qsizetype colon = line.indexOf(':');
        if (colon > 0 && line.left(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0)
            return line.mid(colon + 1).trimmed();
    }
    return {};
}

std::vector<RecordedFrame> LoopbackWebSocketServer::frames(Kind kind) const {
    std::vector<RecordedFrame> result;
    for (const RecordedFrame& frame : frames_)
        if (frame.kind == kind)
            result.push_back(frame);
    return result;
}

bool LoopbackWebSocketServer::waitForFrames(Kind kind, int count, int timeoutMs) {
    return QTest::qWaitFor([&] { return int(frames(kind).size()) >= count; }, timeoutMs);
}

LoopbackWebSocketServer::Connection* LoopbackWebSocketServer::newest() const {
    for (auto it = connections_.rbegin(); it != connections_.rend(); ++it)
        if ((*it)->upgraded && (*it)->socket->state() == QAbstractSocket::ConnectedState)
            return it->get();
    return nullptr;
}

bool LoopbackWebSocketServer::isOpen() const {
    return newest() != nullptr && newest() == connections_.back().get();
}

void LoopbackWebSocketServer::sendText(const QByteArray& utf8) {
    if (Connection* connection = newest())
        connection->socket->write(frameBytes(Kind::text, utf8));
}

void LoopbackWebSocketServer::sendBinary(const QByteArray& bytes) {
    if (Connection* connection = newest())
        connection->socket->write(frameBytes(Kind::binary, bytes));
}

void LoopbackWebSocketServer::sendClose(quint16 code) {
    Connection* connection = newest();
    if (!connection)
        return;
    QByteArray payload(2, 0);
    qToBigEndian(code, payload.data());
    connection->closeSent = true;
    connection->socket->write(frameBytes(Kind::close, payload));
}

void LoopbackWebSocketServer::dropConnection() {
    if (Connection* connection = newest())
        connection->socket->abort();
}

void LoopbackWebSocketServer::onNewConnection() {
    while (QTcpSocket* pending = server_.nextPendingConnection()) {
        auto connection = std::make_unique<Connection>();
        connection->index = int(connections_.size());
        connection->socket.reset(pending);
        pending->setParent(nullptr);
        Connection* raw = connection.get();
        connect(pending, &QTcpSocket::readyRead, this, [this, raw] { onReadyRead(raw); });
        connections_.push_back(std::move(connection));
    }
}

void LoopbackWebSocketServer::onReadyRead(Connection* connection) {
    connection->buffer += connection->socket->readAll();
    if (!connection->upgraded && !readHandshake(connection))
        return;
    while (connection->upgraded && readFrame(connection)) {
    }
}

bool LoopbackWebSocketServer::readHandshake(Connection* connection) {
    const qsizetype end = connection->buffer.indexOf("\r\n\r\n");
    if (end < 0)
        return false;
    const QByteArray request = connection->buffer.left(end + 4);
    if (size_t(connection->index) >= handshakeRequests_.size())
        handshakeRequests_.resize(size_t(connection->index) + 1);
    handshakeRequests_[size_t(connection->index)] = request;
    if (!answersHandshakes_)
        return false;
    connection->buffer.remove(0, end + 4);
    const QByteArray key = handshakeHeader(connection->index, "Sec-WebSocket-Key");
    const QByteArray accept =
        QCryptographicHash::hash(key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1)
            .toBase64();
    connection->socket->write(
        "HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
        "Sec-WebSocket-Accept: " +
        accept + "\r\n\r\n");
    connection->upgraded = true;
    return true;
}

bool LoopbackWebSocketServer::readFrame(Connection* connection) {
    const QByteArray& in = connection->buffer;
    if (in.size() < 2)
        return false;
    const auto byte = [&](qsizetype i) { return quint8(in[i]); };
    const int opcode = byte(0) & 0x0F;
    const bool masked = byte(1) & 0x80;
    quint64 size = byte(1) & 0x7F;
    qsizetype at = 2;
    const int extra = size == 126 ? 2 : size == 127 ? 8 : 0;
    if (in.size() < at + extra + (masked ? 4 : 0))
        return false;
    if (extra) {
        size = 0;
        for (int i = 0; i < extra; ++i)
            size = (size << 8) | byte(at + i);
        at += extra;
    }
    const qsizetype maskAt = at;
    if (masked)
        at += 4;
    if (quint64(in.size() - at) < size)
        return false;
    QByteArray payload = in.mid(at, qsizetype(size));
    if (masked)
        for (qsizetype i = 0; i < payload.size(); ++i)
            payload[i] = char(quint8(payload[i]) ^ byte(maskAt + i % 4));
    connection->buffer.remove(0, at + qsizetype(size));

    const Kind kind = kindOf(opcode);
    frames_.push_back({kind, payload, connection->index, clock_.elapsed()});
    QTcpSocket* socket = connection->socket.get();
    if (kind == Kind::ping) {
        socket->write(frameBytes(Kind::pong, payload));
    } else if (kind == Kind::close) {
        if (!connection->closeSent)
            socket->write(frameBytes(Kind::close, payload.left(2)));
        connection->closeSent = true;
        socket->disconnectFromHost();
    }
    Q_EMIT frameReceived(int(frames_.size()) - 1);
    return socket->state() == QAbstractSocket::ConnectedState;
}

} // namespace tessara::test
