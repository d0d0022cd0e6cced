#include "support/LoopbackWebSocketServer.h"

#include <QProcess>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace tessara {
namespace {

using test::LoopbackWebSocketServer;
using test::RecordedFrame;
using Kind = RecordedFrame::Kind;

// Starts `tessara listen` and spins the event loop, so the in-process server can talk to it.
struct ListenRun {
    QProcess process;
    explicit ListenRun(const QStringList& arguments) {
        process.start(QStringLiteral(TESSARA_BINARY_DIR "/bin/tessara"), QStringList{"listen"} + arguments);
    }
    bool finish(int timeoutMs = 10000) {
        return QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, timeoutMs);
    }
    ~ListenRun() {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
};

// The service team's view: every message as the SDK decodes it, a drop answered by a second join,
// and a terminal status ending in bye and close 1000.
TEST(ListenTool, PrintsEachEventAndEndsWithByeOnATerminalStatus) {
    LoopbackWebSocketServer server;
    QObject::connect(&server, &LoopbackWebSocketServer::frameReceived, [&](int index) {
        const RecordedFrame& frame = server.frames()[size_t(index)];
        if (frame.kind != Kind::binary || !frame.payload.startsWith(R"({"cmd":"join")"))
            return;
        if (frame.connection == 0) {
            for (const char* text :
                 {R"({"cmd":"startCamera","type":"back"})", R"({"cmd":"hb"})",
                  R"({"cmd":"nn-connected","x":1})",
                  R"({"cmd":"rects","x":"0.25","y":"abc","w":"40","h":"1e3"})", R"({"cmd":"rects","x":0.5})",
                  R"({"cmd":"ocrProgress","current":"0.1","max":"1"})",
                  R"({"cmd":"position","x":"nan","y":"0"})",
                  R"({"cmd":"status","type":"KYC_STATUS_ID_PREPARE_BACK"})"})
                server.sendText(text);
            QTimer::singleShot(200, &server, [&] { server.dropConnection(); });
        } else {
            server.sendText(R"({"cmd":"status","type":"PROCESS_SUCCESS"})");
        }
    });
    ListenRun run({server.url(QStringLiteral("/stream")).toString(), "--user-hash", "u-9"});
    ASSERT_TRUE(run.finish());
    EXPECT_EQ(run.process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(run.process.exitCode(), 0);
    EXPECT_EQ(QString::fromUtf8(run.process.readAllStandardOutput()),
              QStringLiteral("open\n"
                             "startCamera {\"cmd\":\"startCamera\",\"type\":\"back\"}\n"
                             "nn-connected {\"cmd\":\"nn-connected\"}\n"
                             "rects {\"cmd\":\"rects\",\"h\":1000,\"w\":40,\"x\":0.25,\"y\":0}\n"
                             "ocrProgress {\"cmd\":\"ocrProgress\",\"current\":0.1,\"max\":1}\n"
                             "position (no JSON form: a number is not finite)\n"
                             "status {\"cmd\":\"status\",\"type\":\"KYC_STATUS_ID_PREPARE_BACK\"}\n"
                             "failed The remote host closed the connection\n"
                             "open\n"
                             "status {\"cmd\":\"status\",\"type\":\"PROCESS_SUCCESS\"}\n"
                             "bye\n"));
    EXPECT_TRUE(run.process.readAllStandardError().contains(R"(The "rects" message could not be decoded)"));
    ASSERT_TRUE(server.waitForFrames(Kind::close, 1));
    EXPECT_TRUE(server.handshakeRequests()[0].startsWith("GET /stream/mobile/h264 "));
    const auto binary = server.frames(Kind::binary);
    EXPECT_EQ(binary.back().payload, QByteArray(R"({"cmd":"bye","from":"u-9"})"));
    EXPECT_EQ(server.frames(Kind::close)[0].closeCode(), 1000);
}

TEST(ListenTool, StopsAfterTheSecondsGivenOrANormalClose) {
    LoopbackWebSocketServer server;
    {
        ListenRun run({server.url().toString(), "--user-hash", "h", "--seconds", "0.3"});
        ASSERT_TRUE(run.finish());
        EXPECT_EQ(run.process.exitCode(), 0);
        EXPECT_EQ(run.process.readAllStandardOutput(), QByteArray("open\nbye\n"));
    }
    {
        ListenRun run({server.url().toString(), "--user-hash", "h"});
        ASSERT_TRUE(QTest::qWaitFor([&] { return server.isOpen(); }, 5000));
        server.sendClose(1001);
        ASSERT_TRUE(run.finish());
        EXPECT_EQ(run.process.exitCode(), 0);
        EXPECT_EQ(run.process.readAllStandardOutput(), QByteArray("open\nclosed 1001\n"));
    }
}

TEST(ListenTool, EndsLikeTheSdkOnAFrameThatIsNoJsonObject) {
    LoopbackWebSocketServer server;
    QObject::connect(&server, &LoopbackWebSocketServer::frameReceived, [&](int index) {
        if (server.frames()[size_t(index)].kind == Kind::binary)
            server.sendText("[]");
    });
    ListenRun run({server.url().toString(), "--user-hash", "h"});
    ASSERT_TRUE(run.finish());
    EXPECT_EQ(run.process.exitStatus(), QProcess::CrashExit);
    EXPECT_TRUE(run.process.readAllStandardError().contains("A signalling frame is no JSON object: []"));
}

TEST(ListenTool, RefusesWrongUsage) {
    for (const QStringList& arguments :
         {QStringList{"ws://127.0.0.1:1"}, QStringList{"nohost", "--user-hash", "h"},
          QStringList{"ws://127.0.0.1:1", "--user-hash", "h", "--seconds", "0"}}) {
        ListenRun run(arguments);
        ASSERT_TRUE(run.finish());
        EXPECT_EQ(run.process.exitCode(), 2) << arguments.join(' ').toStdString();
    }
}

} // namespace
} // namespace tessara
