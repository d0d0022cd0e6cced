#pragma once

#include "support/LoopbackHttpServer.h"
#include "support/TestHelpers.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/backend/TSRTransport.h"
#include "tessara/platform/MainThread.h"

#include <QtTest/QTest>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <ostream>

namespace tessara {

inline void PrintTo(const TSRNetworkError& error, std::ostream* os) {
    *os << "TSRNetworkError(" << static_cast<int>(error.kind()) << ", \""
        << error.errorDescription().toStdString() << "\")";
}

inline void PrintTo(const TSRBackendError& error, std::ostream* os) {
    *os << "TSRBackendError(\"" << error.localizedDescription.toStdString() << "\")";
}

namespace test {

// Records what reaches a completion: how often, with what, and on which thread.
template <typename T> struct Capture {
    struct State {
        int calls = 0;
        std::optional<TSRResult<T>> result;
        bool onMainThread = false;
    };
    std::shared_ptr<State> state = std::make_shared<State>();

    std::function<void(TSRResult<T>)> completion() {
        return [state = state](TSRResult<T> result) {
            ++state->calls;
            state->onMainThread = isMainThread();
            state->result.emplace(std::move(result));
        };
    }
    bool wait(int timeoutMs = 5000) const {
        return QTest::qWaitFor([&] { return state->calls > 0; }, timeoutMs);
    }
    int calls() const { return state->calls; }
    const TSRResult<T>& result() const { return *state->result; }
    const TSRError& error() const { return state->result->error(); }
};

// A fresh loopback backend set as the shared client's instance URL for each test; the
// client's settings are restored afterwards.
class NetworkTest : public ::testing::Test {
protected:
    void SetUp() override {
        network().setInstanceURL(server.url());
        network().setTimeoutInterval(TSRNetwork::TIMEOUT_INTERVAL_FOR_REQUEST);
    }
    void TearDown() override {
        network().setInstanceURL(std::nullopt);
        network().setTimeoutInterval(TSRNetwork::TIMEOUT_INTERVAL_FOR_REQUEST);
    }
    static TSRNetwork& network() { return TSRNetwork::shared(); }

    LoopbackHttpServer server;
};

} // namespace test
} // namespace tessara
