#include "support/LoopbackHttpServer.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>
#include <QtTest/QTest>
#include <algorithm>

namespace tessara::test {

struct LoopbackHttpServer::Connection {
    QPointer<QTcpSocket> socket;
    QByteArray buffer;
    // Set once the connection stops reading: it waits for nothing or is being closed.
    bool done = false;
};

LoopbackHttpServer::LoopbackHttpServer(QObject* parent)
    : QObject(parent)
    , defaultResponse_(CannedResponse::noBody(404)) {
    connect(&server_, &QTcpServer::newConnection, this, &LoopbackHttpServer::onNewConnection);
    server_.listen(QHostAddress::LocalHost, 0);
}

LoopbackHttpServer::~LoopbackHttpServer() {
    closeAllConnections();
}

quint16 LoopbackHttpServer::port() const {
    return server_.serverPort();
}

QUrl LoopbackHttpServer::url(const QString& path) const {
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path));
}

void LoopbackHttpServer::enqueue(CannedResponse response) {
    queue_.push_back(std::move(response));
}

void LoopbackHttpServer::setHandler(Handler handler) {
    handler_ = std::move(handler);
}

void LoopbackHttpServer::setDefaultResponse(CannedResponse response) {
    defaultResponse_ = std::move(response);
}

bool LoopbackHttpServer::waitForRequests(int count, int timeoutMs) {
    return QTest::qWaitFor([&] { return requestCount() >= count; }, timeoutMs);
}

void LoopbackHttpServer::closeAllConnections() {
    for (auto& connection : connections_) {
        connection->done = true;
        if (connection->socket)
            connection->socket->abort();
    }
}

void LoopbackHttpServer::onNewConnection() {
    while (QTcpSocket* socket = server_.nextPendingConnection()) {
        ++connectionCount_;
        auto connection = std::make_unique<Connection>();
        connection->socket = socket;
        Connection* raw = connection.get();
        connections_.push_back(std::move(connection));
        connect(socket, &QTcpSocket::readyRead, this, [this, raw] { onReadyRead(raw); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        onReadyRead(raw);
    }
}

void LoopbackHttpServer::onReadyRead(Connection* connection) {
    if (!connection->socket)
        return;
    connection->buffer += connection->socket->readAll();
    while (!connection->done) {
        if (drop_ && drop_->index == requestCount() + droppedCount_ &&
            connection->buffer.size() >= drop_->bytes) {
            drop_.reset();
            ++droppedCount_;
            connection->done = true;
            connection->socket->abort();
            return;
        }
        qsizetype consumed = 0;
        auto request = RecordedRequest::parse(connection->buffer, &consumed);
        if (!request)
            return;
        connection->buffer.remove(0, consumed);
        requests_.push_back(*request);
        CannedResponse response = defaultResponse_;
        if (!queue_.empty()) {
            response = std::move(queue_.front());
            queue_.pop_front();
        } else if (handler_) {
            response = handler_(requests_.back());
        }
        respond(connection, response);
    }
}

void LoopbackHttpServer::respond(Connection* connection, const CannedResponse& response) {
    if (response.action == CannedResponse::Action::NeverAnswer) {
        connection->done = true;
        return;
    }
    if (response.closesConnection())
        connection->done = true;
    auto send = [connection, response] {
        QTcpSocket* socket = connection->socket;
        if (!socket)
            return;
        if (response.action == CannedResponse::Action::Close) {
            socket->disconnectFromHost();
            return;
        }
        QByteArray bytes = response.bytes();
        if (response.cutAfter)
            bytes.truncate(*response.cutAfter);
        socket->write(bytes);
        socket->flush();
        if (response.closesConnection())
            socket->disconnectFromHost();
    };
    if (response.delayMs > 0)
        QTimer::singleShot(response.delayMs, connection->socket, send);
    else
        send();
}

} // namespace tessara::test
