#include "SocketTestSupport.h"
#include "support/LoopbackTlsServer.h"

#include <QTest>
#include <mutex>

namespace tessara {
namespace {

using test::LoopbackTlsServer;
using test::LoopbackWebSocketServer;
using test::RecordedFrame;
using test::RecordingSocketDelegate;
using Kind = RecordedFrame::Kind;

// The "WebSocket" log lines written while it lives; they come from the socket's thread.
class WebSocketLog {
public:
    WebSocketLog() { previous_ = qInstallMessageHandler(&WebSocketLog::record); }
    ~WebSocketLog() { qInstallMessageHandler(previous_); }

    QStringList lines() const {
        std::lock_guard lock(mutex());
        return lines_();
    }

private:
    static void record(QtMsgType, const QMessageLogContext& context, const QString& message) {
        if (QByteArray(context.category) != "com.tessara.TessaraSDK.WebSocket")
            return;
        std::lock_guard lock(mutex());
        lines_().append(message);
    }
    static std::mutex& mutex() {
        static std::mutex m;
        return m;
    }
    static QStringList& lines_() {
        static QStringList l;
        return l;
    }
    QtMessageHandler previous_ = nullptr;
};

// A socket connected to the loopback service, with a delegate recording what reaches it.
struct OpenLink {
    LoopbackWebSocketServer server;
    RecordingSocketDelegate delegate;
    TSRWebSocket socket{server.url(QStringLiteral("/mobile/h264"))};

    OpenLink() {
        socket.setDelegate(&delegate);
        socket.connect();
    }
};

// Sizes count UTF-8 bytes on the wire, not characters: a message over the limit is dropped with a
// log line, and the next one arrives on the same connection.
TEST(TSRWebSocket, TextMessagesPastTheLimitAreDroppedAndTheLinkStaysOpen) {
    constexpr qsizetype kLimit = TSRWebSocket::MAX_TEXT_MESSAGE_BYTES;
    const QByteArray twoBytes = "я";
    const QByteArray fourBytes = "\xF0\x9F\x98\x80";
    struct Row {
        const char* name;
        QByteArray payload;
        bool delivered;
    };
    const Row rows[] = {
        {"ASCII at the limit", QByteArray(kLimit, 'a'), true},
        {"ASCII past it", QByteArray(kLimit + 1, 'a'), false},
        {"two-byte letters at the limit", twoBytes.repeated(kLimit / 2), true},
        {"two-byte letters past it, fewer characters than the limit", twoBytes.repeated(kLimit / 2) + "a",
         false},
        {"surrogate pairs at the limit", fourBytes.repeated(kLimit / 4), true},
        {"surrogate pairs past it", fourBytes.repeated(kLimit / 4) + "a", false},
    };
    WebSocketLog log;
    OpenLink link;
    LoopbackWebSocketServer& server = link.server;
    RecordingSocketDelegate& delegate = link.delegate;
    ASSERT_TRUE(server.waitForFrames(Kind::binary, 1));
    int texts = 0;
    int drops = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        server.sendText(row.payload);
        server.sendText("next");
        texts += row.delivered ? 2 : 1;
        drops += row.delivered ? 0 : 1;
        ASSERT_TRUE(QTest::qWaitFor([&] { return delegate.count("text") == texts; }, 5000));
        const auto events = delegate.events();
        EXPECT_EQ(events.back().detail, QStringLiteral("next"));
        if (row.delivered) {
            EXPECT_EQ(events[events.size() - 2].detail.toUtf8(), row.payload);
        }
        EXPECT_EQ(log.lines().size(), drops);
    }
    EXPECT_TRUE(log.lines().front().startsWith(QStringLiteral("dropped a text message of 1048577 bytes")))
        << log.lines().front().toStdString();
    EXPECT_EQ(server.connectionCount(), 1);
    EXPECT_EQ(delegate.count("fail"), 0);
}

// What the socket will not read at all ends the link with 1009 before it is buffered, and the link
// is made again as after any abnormal close.
TEST(TSRWebSocket, AFramePastWhatTheSocketReadsClosesWith1009AndReconnects) {
    for (const Kind kind : {Kind::text, Kind::binary}) {
        SCOPED_TRACE(int(kind));
        WebSocketLog log;
        OpenLink link;
        LoopbackWebSocketServer& server = link.server;
        RecordingSocketDelegate& delegate = link.delegate;
        ASSERT_TRUE(server.waitForFrames(Kind::binary, 1));
        const QByteArray huge(TSRWebSocket::MAX_INCOMING_BYTES + 1, 'a');
        kind == Kind::text ? server.sendText(huge) : server.sendBinary(huge);
        ASSERT_TRUE(server.waitForFrames(Kind::close, 1));
        EXPECT_EQ(server.frames(Kind::close)[0].closeCode(), 1009);
        ASSERT_TRUE(server.waitForFrames(Kind::binary, 2, 3000));
        EXPECT_EQ(server.connectionCount(), 2);
        EXPECT_EQ(delegate.count("text"), 0);
        EXPECT_TRUE(
            log.lines().contains(QStringLiteral("closed for a message too big: Maximum framesize exceeded.")))
            << log.lines().join(QLatin1Char('\n')).toStdString();
    }
}

// Against a service whose certificate nobody vouches for, the link fails in the TLS handshake: the
// service never reads the upgrade request, so neither the path nor the User-Agent leaves.
TEST(TSRWebSocket, AnUntrustedCertificateFailsTheLinkBeforeItsRequest) {
    LoopbackTlsServer tls(QStringLiteral(TESSARA_SOURCE_DIR "/tests/support/tls/loopback-cert.pem"),
                          QStringLiteral(TESSARA_SOURCE_DIR "/tests/support/tls/loopback-key.pem"));
    ASSERT_FALSE(tls.certificate().isNull());
    RecordingSocketDelegate delegate;
    TSRWebSocket socket(tls.url(QStringLiteral("wss"), QStringLiteral("/mobile/h264")));
    socket.setDelegate(&delegate);
    socket.connect();
    ASSERT_TRUE(QTest::qWaitFor([&] { return delegate.count("fail") == 1; }, 5000));
    socket.disconnect();
    EXPECT_EQ(delegate.count("connect"), 0);
    EXPECT_GE(tls.connectionCount(), 1);
    EXPECT_EQ(tls.completedHandshakes(), 0);
    EXPECT_TRUE(tls.received().isEmpty()) << tls.received().constData();
}

} // namespace
} // namespace tessara
