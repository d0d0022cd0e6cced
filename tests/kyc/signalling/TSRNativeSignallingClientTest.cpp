#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"

#include "SocketTestSupport.h"
#include "tessara/platform/MainThread.h"

#include <QTest>
#include <atomic>
#include <thread>

namespace tessara {
namespace {

using test::LoopbackWebSocketServer;
using test::RecordedFrame;
using Kind = RecordedFrame::Kind;

// A socket without a network: records what is sent, and lets a test play the socket's thread.
class FakeSocket : public TSRWebSocketProvider {
public:
    void setDelegate(TSRWebSocketProviderDelegate* delegate) override { delegate_ = delegate; }
    TSRWebSocketProviderDelegate* delegate() const override { return delegate_; }
    void connect() override { ++connects; }
    void disconnect() override {
        ++disconnects;
        if (delegate_)
            delegate_->socketDidDisconnect(*this);
        delegate_ = nullptr;
    }
    void sendBytes(QByteArray bytes, bool binary) override {
        sent.push_back(bytes);
        binaries.push_back(binary);
    }
    // Delivers text frames from another thread, as the real socket does.
    void receive(const std::vector<QByteArray>& frames) {
        std::thread([&] {
            for (const QByteArray& frame : frames)
                delegate_->socketDidReceiveText(*this, QString::fromUtf8(frame));
        }).join();
    }

    TSRWebSocketProviderDelegate* delegate_ = nullptr;
    int connects = 0;
    int disconnects = 0;
    std::vector<QByteArray> sent;
    std::vector<bool> binaries;
};

class RecordingScreen : public QObject, public TSRNativeSignallingDelegate {
public:
    void didReceiveOverlayRectangle(const OverlayRectangle& r) override {
        record(QStringLiteral("rects %1 %2 %3 %4 %5")
                   .arg(r.x)
                   .arg(r.y)
                   .arg(r.w)
                   .arg(r.h)
                   .arg(r.color.value_or("-")));
    }
    void didRemoveOverlayRectangle(const RemoveRectangle&) override { record(QStringLiteral("removeRects")); }
    void didReceiveTrackingCoordinates(double x, double y) override {
        record(QStringLiteral("position %1 %2").arg(x).arg(y));
    }
    void didReceiveOCRAction(OCRAction action) override {
        record(action == OCRAction::start ? QStringLiteral("ocr start") : QStringLiteral("ocr stop"));
    }
    void didReceiveOCRProgress(float current, float max) override {
        record(QStringLiteral("ocrProgress %1 %2").arg(current).arg(max));
    }
    void didReceiveQuality(const QString& msg) override { record(QStringLiteral("quality ") + msg); }
    void didReceiveStatus(const QString& type) override { record(QStringLiteral("status ") + type); }
    void didReceiveStartCamera(int position) override {
        record(QStringLiteral("startCamera %1").arg(position));
    }
    void didConnectToService() override { record(QStringLiteral("nn-connected")); }
    void setSocketConnected(bool connected) override { socketConnected = connected; }
    void setCurrentCameraPosition(int position) override { cameraPosition = position; }
    void setServerIsReadyForFrames(bool ready) override { readyForFrames = ready; }
    void stopFramesAfterSocketFailure() override { ++frameStops; }

    void record(const QString& call) {
        calls.append(call);
        allOnMain = allOnMain && isMainThread();
    }

    QStringList calls;
    bool allOnMain = true;
    std::atomic<bool> socketConnected{false};
    std::atomic<int> cameraPosition{1};
    std::atomic<bool> readyForFrames{false};
    std::atomic<int> frameStops{0};
};

struct FakeClient {
    FakeSocket* socket = new FakeSocket;
    RecordingScreen screen;
    TSRNativeSignallingClient client{std::unique_ptr<TSRWebSocketProvider>(socket)};
    FakeClient() { client.setDelegate(&screen); }
};

TEST(TSRNativeSignallingClient, HandsEveryMessageToTheScreenOnTheMainThread) {
    FakeClient fake;
    fake.socket->receive({
        R"({"cmd":"rects","x":"0.25","y":"0.5","w":"40","h":"30","color":"red"})",
        R"({"cmd":"removeRects"})",
        R"({"cmd":"position","x":"abc","y":"0.5"})",
        R"({"cmd":"ocr","type":"stop"})",
        R"({"cmd":"ocrProgress","current":"3","max":"10"})",
        R"({"cmd":"quality","msg":"TOO_DARK"})",
        R"({"cmd":"status","type":"KYC_STATUS_ID_PREPARE_BACK"})",
        R"({"cmd":"startCamera","type":"front"})",
        R"({"cmd":"nn-connected"})",
    });
    // Written on the socket's thread, before any call has reached the main thread.
    EXPECT_EQ(fake.screen.cameraPosition, 2);
    EXPECT_TRUE(fake.screen.readyForFrames);
    EXPECT_TRUE(fake.screen.calls.isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return fake.screen.calls.size() == 9; }, 2000));
    EXPECT_EQ(fake.screen.calls,
              QStringList({"rects 0.25 0.5 40 30 red", "removeRects", "position 0 0.5", "ocr stop",
                           "ocrProgress 3 10", "quality TOO_DARK", "status KYC_STATUS_ID_PREPARE_BACK",
                           "startCamera 2", "nn-connected"}));
    EXPECT_TRUE(fake.screen.allOnMain);
}

TEST(TSRNativeSignallingClient, IgnoredAndUndecodableFramesCostNothingButTheirOwnMessage) {
    FakeClient fake;
    fake.socket->receive({
        R"({"cmd":"bye","from":"service"})",
        R"({"cmd":"rects","x":0.5,"y":"0","w":"0","h":"0"})",
        R"({"cmd":"startCamera","type":"left"})",
        R"({"cmd":"status","type":"PROCESS_SUCCESS"})",
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !fake.screen.calls.isEmpty(); }, 2000));
    QTest::qWait(20);
    EXPECT_EQ(fake.screen.calls, QStringList({"status PROCESS_SUCCESS"}));
    EXPECT_EQ(fake.screen.cameraPosition, 1);
}

TEST(TSRNativeSignallingClientDeathTest, FramesTheServiceMustNeverSendEndTheProgram) {
    EXPECT_DEATH(
        {
            FakeClient fake;
            fake.socket->delegate_->socketDidReceiveText(*fake.socket,
                                                         QStringLiteral(R"({"cmd":["rects"]})"));
        },
        "signalling frame");
}

TEST(TSRNativeSignallingClient, AScreenThatIsGoneHearsNothing) {
    FakeClient fake;
    auto screen = std::make_unique<RecordingScreen>();
    fake.client.setDelegate(screen.get());
    fake.socket->receive({R"({"cmd":"status","type":"X"})"});
    screen.reset();
    fake.client.setDelegate(nullptr);
    QTest::qWait(20);
    EXPECT_TRUE(fake.screen.calls.isEmpty());
}

TEST(TSRNativeSignallingClient, SocketUrlAppendsTheStreamPath) {
    EXPECT_EQ(TSRNativeSignallingClient::socketUrl(QUrl("wss://kyc.example/stream")),
              QUrl("wss://kyc.example/stream/mobile/h264"));
    EXPECT_EQ(TSRNativeSignallingClient::socketUrl(QUrl("wss://kyc.example/stream/")),
              QUrl("wss://kyc.example/stream/mobile/h264"));
    EXPECT_EQ(TSRNativeSignallingClient::socketUrl(QUrl("ws://127.0.0.1:9000")),
              QUrl("ws://127.0.0.1:9000/mobile/h264"));
}

// The whole protocol over the real socket: join, messages, a dropped link and a second join, and
// bye then close 1000 at the end.
TEST(TSRNativeSignallingClient, JoinsAgainAfterADropAndEndsWithByeThenClose) {
    TSRSignallingClient::setUserHash(QStringLiteral("u-42"));
    LoopbackWebSocketServer server;
    RecordingScreen screen;
    TSRNativeSignallingClient client(std::make_unique<TSRWebSocket>(
        TSRNativeSignallingClient::socketUrl(server.url(QStringLiteral("/s")))));
    client.setDelegate(&screen);
    client.webSocket()->connect();
    const QByteArray join = R"({"cmd":"join","from":"u-42","fromMobile":false,"techCheck":false})";
    ASSERT_TRUE(server.waitForFrames(Kind::binary, 1));
    EXPECT_EQ(server.frames(Kind::binary)[0].payload, join);
    EXPECT_TRUE(server.handshakeRequests()[0].startsWith("GET /s/mobile/h264 "));

    server.sendText(R"({"cmd":"wave"})");
    server.sendText(R"({"cmd":"nn-connected"})");
    ASSERT_TRUE(QTest::qWaitFor([&] { return screen.calls.size() == 1; }, 2000));

    server.dropConnection();
    ASSERT_TRUE(server.waitForFrames(Kind::binary, 2, 2000));
    EXPECT_EQ(server.frames(Kind::binary)[1].payload, join);
    EXPECT_EQ(screen.frameStops, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return screen.socketConnected.load(); }, 1000));

    client.sendByeAndDisconnect();
    ASSERT_TRUE(server.waitForFrames(Kind::close, 1));
    const auto frames = server.frames();
    EXPECT_EQ(frames[frames.size() - 2].payload, QByteArray(R"({"cmd":"bye","from":"u-42"})"));
    EXPECT_EQ(frames.back().closeCode(), 1000);
    EXPECT_FALSE(screen.socketConnected);
    EXPECT_EQ(client.webSocket(), nullptr);
}

} // namespace
} // namespace tessara
