#pragma once

#include "support/LoopbackWebSocketServer.h"
#include "tessara/kyc/signalling/TSRWebSocket.h"
#include "tessara/platform/MainThread.h"

#include <QThread>
#include <gtest/gtest.h>
#include <mutex>
#include <vector>

namespace tessara::test {

// Records what a socket tells its delegate; the calls come from the socket's thread.
class RecordingSocketDelegate : public TSRWebSocketProviderDelegate {
public:
    struct Event {
        QString kind; // "connect", "fail", "text", "disconnect"
        QString detail;
        bool onMainThread = false;
    };

    // Sent from socketDidConnect, as the signalling client sends its join.
    QByteArray greeting = "hello";

    void socketDidConnect(TSRWebSocketProvider& socket) override {
        record("connect", {});
        if (!greeting.isEmpty())
            socket.sendBytes(greeting);
    }
    void socketDidFail(TSRWebSocketProvider&, const QString& error) override { record("fail", error); }
    void socketDidReceiveText(TSRWebSocketProvider&, const QString& text) override { record("text", text); }
    void socketDidDisconnect(TSRWebSocketProvider&) override { record("disconnect", {}); }

    std::vector<Event> events() const {
        std::lock_guard lock(mutex_);
        return events_;
    }
    int count(const QString& kind) const {
        int n = 0;
        for (const Event& event : events())
            n += event.kind == kind;
        return n;
    }

private:
    void record(const char* kind, const QString& detail) {
        std::lock_guard lock(mutex_);
        events_.push_back({QString::fromLatin1(kind), detail, isMainThread()});
    }
    mutable std::mutex mutex_;
    std::vector<Event> events_;
};

} // namespace tessara::test
