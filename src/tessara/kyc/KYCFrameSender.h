#pragma once

#include <QByteArray>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace tessara {

class TSRWebSocketProvider;

// The path of the encoded units from the encoder's thread to the step's socket. The screen lets
// go of the socket on the main thread while units may still be on their way, so the socket is
// reached under a lock here and nowhere else.
class KYCFrameSender {
public:
    // Main thread: the socket units go to, or none.
    void attach(TSRWebSocketProvider* socket);
    // Main thread: no unit reaches the socket after this returns.
    void detach() { attach(nullptr); }

    // Encoder thread: counts the unit and sends it as one binary message while the socket is
    // connected; otherwise drops it silently.
    void send(QByteArray unit);

    // Written from the socket's thread, read from the encoder's and the main thread.
    std::atomic<bool> socketConnected{false};
    int64_t encodedFramesCount() const { return count_.load(); }
    int64_t sentCount() const { return sent_.load(); }

private:
    std::mutex mutex_;
    TSRWebSocketProvider* socket_ = nullptr;
    std::atomic<int64_t> count_{0};
    std::atomic<int64_t> sent_{0};
};

} // namespace tessara
