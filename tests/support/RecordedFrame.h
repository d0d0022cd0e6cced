#pragma once

#include <QByteArray>
#include <QtEndian>

namespace tessara::test {

// One WebSocket frame as a loopback server received it: its kind, its unmasked payload, the
// connection it came on (0 for the first) and when it arrived (ms since the server started).
struct RecordedFrame {
    // Valued as the wire's opcodes.
    enum class Kind {
        continuation = 0x0,
        text = 0x1,
        binary = 0x2,
        other = 0x3,
        close = 0x8,
        ping = 0x9,
        pong = 0xA
    };

    Kind kind = Kind::other;
    QByteArray payload;
    int connection = 0;
    qint64 atMs = 0;

    // The code of a close frame; 1005 when it carries none.
    int closeCode() const {
        if (payload.size() < 2)
            return 1005;
        return qFromBigEndian<quint16>(payload.constData());
    }
};

} // namespace tessara::test
