#include "SocketTestSupport.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/kyc/signalling/JoinSignal.h"

#include <QTest>
#include <thread>

namespace tessara {
namespace {

using test::LoopbackWebSocketServer;
using test::RecordedFrame;
using test::RecordingSocketDelegate;
using Kind = RecordedFrame::Kind;

struct OpenSocket {
    LoopbackWebSocketServer server;
    RecordingSocketDelegate delegate;
    std::unique_ptr<TSRWebSocket> socket;

    OpenSocket() {
        socket = std::make_unique<TSRWebSocket>(server.url(QStringLiteral("/mobile/h264")));
        socket->setDelegate(&delegate);
        socket->connect();
        EXPECT_TRUE(server.waitForFrames(Kind::binary, 1));
    }
};

TEST(TSRWebSocket, OpensWithTheUserAgentAndSendsBinaryUnlessToldOtherwise) {
    OpenSocket open;
    EXPECT_EQ(open.server.handshakeRequests().at(0).left(25), QByteArray("GET /mobile/h264 HTTP/1.1"));
    EXPECT_EQ(open.server.handshakeHeader(0, "User-Agent"), TSRNetwork::shared().userAgent().toUtf8());
    open.socket->send(JoinSignal{WSCommand::join, QStringLiteral("u1"), false, false});
    open.socket->send(JoinSignal{WSCommand::join, QStringLiteral("u2"), false, false}, false);
    ASSERT_TRUE(open.server.waitForFrames(Kind::text, 1));
    const auto binary = open.server.frames(Kind::binary);
    ASSERT_EQ(binary.size(), 2u);
    EXPECT_EQ(binary[0].payload, QByteArray("hello"));
    EXPECT_EQ(binary[1].payload,
              QByteArray(R"({"cmd":"join","from":"u1","fromMobile":false,"techCheck":false})"));
    EXPECT_EQ(open.server.frames(Kind::text)[0].payload,
              QByteArray(R"({"cmd":"join","from":"u2","fromMobile":false,"techCheck":false})"));
}

TEST(TSRWebSocket, TextFramesReachTheDelegateOnTheSocketThreadAndBinaryOnesAreSkipped) {
    OpenSocket open;
    open.server.sendBinary("ignored");
    open.server.sendText("first");
    open.server.sendText("second");
    ASSERT_TRUE(QTest::qWaitFor([&] { return open.delegate.count("text") == 2; }, 3000));
    const auto events = open.delegate.events();
    EXPECT_EQ(events[1].detail, QStringLiteral("first"));
    EXPECT_EQ(events[2].detail, QStringLiteral("second"));
    EXPECT_FALSE(events[1].onMainThread);
}

TEST(TSRWebSocket, PingsEveryTwoSecondsWithTheFirstAtOnce) {
    OpenSocket open;
    const qint64 openedAt = open.server.frames(Kind::binary)[0].atMs;
    ASSERT_TRUE(open.server.waitForFrames(Kind::ping, 3, 6000));
    const auto pings = open.server.frames(Kind::ping);
    EXPECT_LT(pings[0].atMs - openedAt, 500); // at once; the margin is for a loaded machine
    for (size_t i = 1; i < 3; ++i) {
        EXPECT_GE(pings[i].atMs - pings[i - 1].atMs, 1800); // delivery jitter of the earlier ping
        EXPECT_LE(pings[i].atMs - pings[i - 1].atMs, 2600);
    }
}

// A dropped link and a close other than 1000/1001 both bring a new connection about a second later;
// only the drop is a failure the delegate hears of.
TEST(TSRWebSocket, ReconnectsOneSecondAfterADropOrAnAbnormalClose) {
    struct Row {
        const char* name;
        std::function<void(LoopbackWebSocketServer&)> end;
        int failures;
    };
    const Row rows[] = {
        {"tcp drop", [](LoopbackWebSocketServer& s) { s.dropConnection(); }, 1},
        {"close 1006", [](LoopbackWebSocketServer& s) { s.sendClose(1006); }, 0},
        {"close 4000", [](LoopbackWebSocketServer& s) { s.sendClose(4000); }, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        OpenSocket open;
        const qint64 endedAt = open.server.elapsedMs();
        row.end(open.server);
        ASSERT_TRUE(open.server.waitForFrames(Kind::binary, 2, 3000));
        const qint64 rejoined = open.server.frames(Kind::binary)[1].atMs - endedAt;
        EXPECT_GE(rejoined, 950);
        EXPECT_LE(rejoined, 1500);
        EXPECT_EQ(open.server.frames(Kind::binary)[1].connection, 1);
        EXPECT_EQ(open.delegate.count("connect"), 2);
        EXPECT_EQ(open.delegate.count("fail"), row.failures);
        EXPECT_EQ(open.delegate.count("disconnect"), 0);
    }
}

TEST(TSRWebSocket, ANormalOrGoingAwayCloseTearsDownForGood) {
    for (quint16 code : {quint16(1000), quint16(1001)}) {
        SCOPED_TRACE(code);
        OpenSocket open;
        open.server.sendClose(code);
        ASSERT_TRUE(QTest::qWaitFor([&] { return open.delegate.count("disconnect") == 1; }, 2000));
        QTest::qWait(1300);
        EXPECT_EQ(open.server.connectionCount(), 1);
        EXPECT_EQ(open.delegate.count("fail"), 0);
        open.socket->connect();
        QTest::qWait(100);
        EXPECT_EQ(open.server.connectionCount(), 1);
    }
}

TEST(TSRWebSocket, DisconnectClosesWithCode1000AndStaysClosed) {
    OpenSocket open;
    open.socket->disconnect();
    ASSERT_TRUE(open.server.waitForFrames(Kind::close, 1));
    EXPECT_EQ(open.server.frames(Kind::close)[0].closeCode(), 1000);
    EXPECT_EQ(open.delegate.count("disconnect"), 1);
    EXPECT_EQ(open.socket->delegate(), nullptr);
    open.socket->sendBytes("late");
    QTest::qWait(1200);
    EXPECT_EQ(open.server.connectionCount(), 1);
    EXPECT_EQ(open.server.frames(Kind::binary).size(), 1u);
}

TEST(TSRWebSocket, DisconnectWhileConnectingCausesNothing) {
    LoopbackWebSocketServer server;
    server.setAnswersHandshakes(false);
    RecordingSocketDelegate delegate;
    TSRWebSocket socket(server.url());
    socket.setDelegate(&delegate);
    socket.connect();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.handshakeRequests().empty(); }, 3000));
    socket.disconnect();
    QTest::qWait(1300);
    EXPECT_EQ(server.connectionCount(), 1);
    ASSERT_EQ(delegate.events().size(), 1u);
    EXPECT_EQ(delegate.events()[0].kind, QStringLiteral("disconnect"));
}

TEST(TSRWebSocket, AHandshakeThatNeverEndsTimesOutAndIsTriedAgain) {
    LoopbackWebSocketServer server;
    server.setAnswersHandshakes(false);
    RecordingSocketDelegate delegate;
    TSRWebSocket socket(server.url());
    socket.setTimeoutInterval(0.2);
    socket.setDelegate(&delegate);
    socket.connect();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.connectionCount() == 2; }, 3000));
    ASSERT_GE(delegate.count("fail"), 1);
    EXPECT_EQ(delegate.events()[0].detail, QStringLiteral("The request timed out."));
}

TEST(TSRWebSocket, SendsFromAPlainThreadArriveIntactAndInOrder) {
    OpenSocket open;
    constexpr int kCount = 10000;
    std::thread sender([&] {
        for (int i = 0; i < kCount; ++i)
            open.socket->sendBytes(QByteArray::number(i) + QByteArray(i % 97, char('a' + i % 26)));
    });
    sender.join();
    ASSERT_TRUE(open.server.waitForFrames(Kind::binary, kCount + 1, 20000));
    const auto binary = open.server.frames(Kind::binary);
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(binary[size_t(i) + 1].payload,
                  QByteArray::number(i) + QByteArray(i % 97, char('a' + i % 26)))
            << i;
}

} // namespace
} // namespace tessara
