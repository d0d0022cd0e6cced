// Signalling channel timings: binary messages per second through `sendBytes` from a second thread
// to a loopback server (1 KB and 60 KB, the size of join/bye and of a large video unit), and the
// time from a text frame's arrival on the socket's thread to the screen's call on the main thread.

#include "BenchMain.h"
#include "support/LoopbackWebSocketServer.h"
#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"
#include "tessara/kyc/signalling/TSRWebSocket.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <thread>

using namespace tessara;
using test::LoopbackWebSocketServer;
using Kind = test::RecordedFrame::Kind;

namespace {

void BM_SendFromSecondThread(benchmark::State& state) {
    LoopbackWebSocketServer server;
    TSRWebSocket socket(server.url());
    socket.connect();
    if (!QTest::qWaitFor([&] { return server.isOpen(); }, 5000))
        return state.SkipWithError("the socket did not open");
    QTest::qWait(50);
    const QByteArray payload(qsizetype(state.range(0)), 'v');
    constexpr int kBatch = 200;
    int expected = 0;
    for (auto _ : state) {
        std::thread sender([&] {
            for (int i = 0; i < kBatch; ++i)
                socket.sendBytes(payload);
        });
        expected += kBatch;
        const bool arrived =
            QTest::qWaitFor([&] { return int(server.frames(Kind::binary).size()) >= expected; }, 20000);
        sender.join();
        if (!arrived)
            return state.SkipWithError("messages went missing");
    }
    state.SetItemsProcessed(state.iterations() * kBatch);
    state.SetBytesProcessed(state.iterations() * kBatch * state.range(0));
}
BENCHMARK(BM_SendFromSecondThread)->Arg(1024)->Arg(60 * 1024)->Unit(benchmark::kMillisecond)->UseRealTime();

// Stamps each frame as the socket hands it over, then lets the real client do the rest.
class StampingDelegate : public TSRWebSocketProviderDelegate {
public:
    explicit StampingDelegate(TSRNativeSignallingClient& client)
        : client_(client) {}
    void socketDidConnect(TSRWebSocketProvider& s) override { client_.socketDidConnect(s); }
    void socketDidFail(TSRWebSocketProvider& s, const QString& e) override { client_.socketDidFail(s, e); }
    void socketDidDisconnect(TSRWebSocketProvider& s) override { client_.socketDidDisconnect(s); }
    void socketDidReceiveText(TSRWebSocketProvider& s, const QString& text) override {
        arrivedNs.store(clock.nsecsElapsed());
        client_.socketDidReceiveText(s, text);
    }
    QElapsedTimer clock;
    std::atomic<qint64> arrivedNs{0};

private:
    TSRNativeSignallingClient& client_;
};

class TimingScreen : public QObject, public TSRNativeSignallingDelegate {
public:
    void didReceiveOverlayRectangle(const OverlayRectangle&) override {}
    void didRemoveOverlayRectangle(const RemoveRectangle&) override {}
    void didReceiveTrackingCoordinates(double, double) override { calledNs = clock->nsecsElapsed(); }
    void didReceiveOCRAction(OCRAction) override {}
    void didReceiveOCRProgress(float, float) override {}
    void didReceiveQuality(const QString&) override {}
    void didReceiveStatus(const QString&) override {}
    void didReceiveStartCamera(int) override {}
    void didConnectToService() override {}
    void setSocketConnected(bool) override {}
    void setCurrentCameraPosition(int) override {}
    void setServerIsReadyForFrames(bool) override {}
    void stopFramesAfterSocketFailure() override {}
    const QElapsedTimer* clock = nullptr;
    qint64 calledNs = -1;
};

void BM_TextFrameToScreen(benchmark::State& state) {
    LoopbackWebSocketServer server;
    TimingScreen screen;
    TSRNativeSignallingClient client(std::make_unique<TSRWebSocket>(server.url()));
    StampingDelegate stamps(client);
    stamps.clock.start();
    screen.clock = &stamps.clock;
    client.webSocket()->setDelegate(&stamps);
    client.setDelegate(&screen);
    client.webSocket()->connect();
    if (!QTest::qWaitFor([&] { return server.isOpen(); }, 5000))
        return state.SkipWithError("the socket did not open");
    std::vector<double> micros;
    for (auto _ : state) {
        screen.calledNs = -1;
        server.sendText(R"({"cmd":"position","x":"0.5","y":"0.25"})");
        while (screen.calledNs < 0)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        const double us = double(screen.calledNs - stamps.arrivedNs.load()) / 1000.0;
        micros.push_back(us);
        state.SetIterationTime(us / 1e6);
    }
    std::sort(micros.begin(), micros.end());
    state.counters["median_us"] = micros[micros.size() / 2];
    state.counters["p99_us"] = micros[std::min(micros.size() - 1, micros.size() * 99 / 100)];
    client.setDelegate(nullptr);
}
BENCHMARK(BM_TextFrameToScreen)->Iterations(2000)->UseManualTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    return tessara::bench::runBenchmarks(argc, argv);
}
