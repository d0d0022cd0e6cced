#pragma once

#include <QByteArray>
#include <cstdint>
#include <functional>
#include <wels/codec_app_def.h>

namespace tessara {

// Turns the encoder's output for one picture into the stream's messages: one unit each, the four
// bytes 00 00 00 01 then the unit with its header, in encoder order (at a key frame the sequence
// and picture parameter sets come first because the encoder writes them first). Each unit is copied
// once, into the message. Plain logic: no encoder, no socket.
class AnnexBFramer {
public:
    using UnitHandler = std::function<void(QByteArray unit)>;

    // Calls `handler` once per unit of `output`, on the calling thread; returns the unit count.
    // With no handler nothing is copied and 0 is returned.
    static int emit(const SFrameBSInfo& output, const UnitHandler& handler);

    // The start code each message begins with.
    static QByteArray startCode();
};

} // namespace tessara
