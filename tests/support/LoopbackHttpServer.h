#pragma once

// A raw HTTP/1.1 server on 127.0.0.1 for tests. It answers whatever a test tells it,
// byte for byte, so tests can produce any status, headers and framing: no body at all,
// compressed bodies, an answer that never comes, a connection closed mid-way.
//
//   LoopbackHttpServer server;                                  // listens at once
//   server.enqueue(CannedResponse::json(200, R"({"fields":[]})"));  // answers in order...
//   server.setHandler([](const RecordedRequest& r) {             // ...then the handler
//       return CannedResponse::json(200, r.body);
//   });
//   network.setInstanceURL(server.url("/api"));
//   ... start a call ...
//   ASSERT_TRUE(server.waitForRequests(1));
//   EXPECT_EQ(server.requests()[0].header("Accept"), "application/json");
//
// Every request is recorded with its raw bytes and parsed parts. The server runs on the
// thread that made it and needs that thread's event loop (QTest::qWaitFor spins it).

#include "support/CannedResponse.h"
#include "support/RecordedRequest.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QUrl>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QTcpSocket;

namespace tessara::test {

class LoopbackHttpServer : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<CannedResponse(const RecordedRequest&)>;

    explicit LoopbackHttpServer(QObject* parent = nullptr);
    ~LoopbackHttpServer() override;

    quint16 port() const;
    // "http://127.0.0.1:<port>" followed by `path`.
    QUrl url(const QString& path = {}) const;

    // Answers are taken from the queue first, in order; when it is empty the handler
    // decides; without a handler the default response is sent (404, no body).
    void enqueue(CannedResponse response);
    void setHandler(Handler handler);
    void setDefaultResponse(CannedResponse response);

    const std::vector<RecordedRequest>& requests() const { return requests_; }
    int requestCount() const { return static_cast<int>(requests_.size()); }
    // Spins the event loop until `count` requests have arrived in total.
    bool waitForRequests(int count, int timeoutMs = 5000);
    // Number of connections accepted so far.
    int connectionCount() const { return connectionCount_; }
    // Closes every open connection (also those that wait for an answer that never comes).
    void closeAllConnections();
    // Request number `index` (from 0, dropped ones counted) is cut off as a dying backend would
    // cut it: once `bytes` of it (request line and headers included) are read, the connection is
    // aborted without an answer. A request shorter than that is answered as usual.
    void dropRequest(int index, qsizetype bytes) { drop_ = Drop{index, bytes}; }
    // Requests cut off so far; they are not in requests().
    int droppedCount() const { return droppedCount_; }

private:
    struct Connection;
    void onNewConnection();
    void onReadyRead(Connection* connection);
    void respond(Connection* connection, const CannedResponse& response);

    QTcpServer server_;
    std::deque<CannedResponse> queue_;
    Handler handler_;
    CannedResponse defaultResponse_;
    std::vector<RecordedRequest> requests_;
    std::vector<std::unique_ptr<Connection>> connections_;
    int connectionCount_ = 0;
    struct Drop {
        int index;
        qsizetype bytes;
    };
    std::optional<Drop> drop_;
    int droppedCount_ = 0;
};

} // namespace tessara::test
