#pragma once

// The JSON of the signalling messages, through the documents' record tables: each message's .cpp
// holds its one field table (keys in ascending byte order, which is also the order they are
// written). decodeDocument/encodeDocument work for every message type below.
//
// The service writes the numbers of "rects", "position" and "ocrProgress" as JSON strings, while
// the messages' own encoders write JSON numbers; the two codecs at the end carry that asymmetry.

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/RecordCodecs.h"
#include "tessara/kyc/signalling/KYCCameraPosition.h"
#include "tessara/kyc/signalling/OCRAction.h"
#include "tessara/kyc/signalling/WSCommand.h"

#include <concepts>

namespace tessara {

#define TESSARA_DECLARE_SIGNAL_CODING(Type)                                                                  \
    struct Type;                                                                                             \
    void readJson(JsonValue value, Type& out);                                                               \
    void writeJson(JsonWriter& writer, const Type& value);                                                   \
    template <> std::optional<Type> decodeDocument<Type>(QByteArrayView bytes);                              \
    template <> std::optional<QByteArray> encodeDocument<Type>(const Type& value);

TESSARA_DECLARE_SIGNAL_CODING(ByeSignal)
TESSARA_DECLARE_SIGNAL_CODING(JoinSignal)
TESSARA_DECLARE_SIGNAL_CODING(KYCStartCameraSignal)
TESSARA_DECLARE_SIGNAL_CODING(KYCStatusSignal)
TESSARA_DECLARE_SIGNAL_CODING(NNConnectedCommand)
TESSARA_DECLARE_SIGNAL_CODING(OCRActionSignal)
TESSARA_DECLARE_SIGNAL_CODING(OCRProgressSignal)
TESSARA_DECLARE_SIGNAL_CODING(OCRQualityMessage)
TESSARA_DECLARE_SIGNAL_CODING(OverlayRectangle)
TESSARA_DECLARE_SIGNAL_CODING(RemoveRectangle)
TESSARA_DECLARE_SIGNAL_CODING(TrackingCoordinates)

#undef TESSARA_DECLARE_SIGNAL_CODING

template <> struct DefaultCodec<WSCommand> { using type = EnumCodec<WSCommand, &wsCommandFromRaw>; };
template <> struct DefaultCodec<KYCCameraPosition> {
    using type = EnumCodec<KYCCameraPosition, &kycCameraPositionFromRaw>;
};
template <> struct DefaultCodec<OCRAction> { using type = EnumCodec<OCRAction, &ocrActionFromRaw>; };

// An outgoing message: it names its command and its sender, and encodes itself.
template <typename T>
concept WSSendable = requires(const T& message) {
    { message.cmd } -> std::convertible_to<WSCommand>;
    { message.from } -> std::convertible_to<QString>;
    { encodeDocument<T>(message) } -> std::same_as<std::optional<QByteArray>>;
};

// Parses the whole text as a number, without regard to the locale: empty text, leading blanks, a
// leading "+", trailing characters and values out of range fail. "1e3", "nan" and "inf" are
// numbers. Written for double and float.
template <typename T> std::optional<T> parseNumberText(std::string_view text);

// A number sent as a JSON string whose unreadable text reads as 0.0 ("rects", "position"). A value
// that is no JSON string still fails the message.
struct NumberTextOrZeroCodec {
    static double read(JsonValue value);
    static void write(JsonWriter& writer, double value);
};
inline constexpr NumberTextOrZeroCodec numberTextOrZero{};

// A number sent as a JSON string whose unreadable text ends the program ("ocrProgress").
struct NumberTextOrFatalCodec {
    static constexpr bool fatalOnBadInput = true;
    static float read(JsonValue value);
    static void write(JsonWriter& writer, float value);
};
inline constexpr NumberTextOrFatalCodec numberTextOrFatal{};

} // namespace tessara
