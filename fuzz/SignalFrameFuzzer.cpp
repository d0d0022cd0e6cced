// One text frame of the verification service as the socket thread reads it. A frame that is no
// JSON object, or whose "cmd" is no string, and an "ocrProgress" number that is no number end the
// program on purpose; everything else is a message, a logged undecodable frame, or ignored.

#include "support/FuzzSupport.h"
#include "tessara/documents/JsonDom.h"
#include "tessara/kyc/signalling/SignalCoding.h"
#include "tessara/kyc/signalling/SignalFrame.h"

#include <type_traits>

using namespace tessara;

namespace {

// The service sends the numbers of these messages as JSON strings, their own encoders write JSON
// numbers: their encoding is not what a frame of the service looks like.
template <typename T>
constexpr bool kNumbersAsText =
    std::is_same_v<T, OverlayRectangle> || std::is_same_v<T, TrackingCoordinates> ||
    std::is_same_v<T, OCRProgressSignal>;

std::string commandText(QByteArrayView json) {
    const std::optional<JsonDom> dom = JsonDom::parse(json);
    if (!dom || dom->root().kind() != JsonDom::Kind::object)
        return {};
    const JsonValue cmd = dom->root().member("cmd");
    return cmd.isValid() && cmd.kind() == JsonDom::Kind::string ? std::string(cmd.text()) : std::string();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView input = fuzz::bytesOf(data, size);
    std::optional<SignalFrame> frame;
    fuzz::runGuarded([&] { frame = SignalFrame::read(input); });
    if (!frame || frame->kind != SignalFrame::Kind::message)
        return 0;
    FUZZ_CHECK(frame->message.has_value());
    const SignalMessage& message = *frame->message;
    // The message is of the command the frame named.
    FUZZ_CHECK(commandText(input) == rawValueUtf8(commandOf(message)));

    const std::optional<QByteArray> encoded = encodeSignalMessage(message);
    if (!encoded)
        return 0; // a NaN or infinite number has no JSON form
    FUZZ_CHECK(commandText(*encoded) == rawValueUtf8(commandOf(message)));
    std::visit(
        [&](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            if constexpr (!kNumbersAsText<T>) {
                // What the SDK writes, the SDK reads back as the same message; never a fatal end.
                const SignalFrame again = SignalFrame::read(*encoded);
                FUZZ_CHECK(again.kind == SignalFrame::Kind::message && again.message == message);
            }
        },
        message);
    return 0;
}
