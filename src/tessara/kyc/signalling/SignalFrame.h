#pragma once

#include "tessara/kyc/signalling/KYCStartCameraSignal.h"
#include "tessara/kyc/signalling/KYCStatusSignal.h"
#include "tessara/kyc/signalling/NNConnectedCommand.h"
#include "tessara/kyc/signalling/OCRActionSignal.h"
#include "tessara/kyc/signalling/OCRProgressSignal.h"
#include "tessara/kyc/signalling/OCRQualityMessage.h"
#include "tessara/kyc/signalling/OverlayRectangle.h"
#include "tessara/kyc/signalling/RemoveRectangle.h"
#include "tessara/kyc/signalling/TrackingCoordinates.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>
#include <variant>

namespace tessara {

// Every message the service sends that reaches the screen.
using SignalMessage =
    std::variant<OverlayRectangle, RemoveRectangle, TrackingCoordinates, OCRActionSignal, OCRProgressSignal,
                 OCRQualityMessage, KYCStatusSignal, KYCStartCameraSignal, NNConnectedCommand>;

// What one text frame from the service amounts to. Plain and thread-free: the client reads frames on
// the socket's thread.
struct SignalFrame {
    enum class Kind {
        ignored,     // no "cmd", an unknown command, or "bye", "hb", "join"
        undecodable, // a known command whose message does not decode; `error` says why
        message,
    };

    // Reads the UTF-8 text of one frame. Ends the program when the text is no JSON, is no JSON
    // object, or has a "cmd" that is no string: the service is trusted to that degree.
    static SignalFrame read(QByteArrayView utf8);

    Kind kind = Kind::ignored;
    std::optional<SignalMessage> message;
    QString error;
};

// The command of a message and its bytes written by its type's own encoder; std::nullopt when the
// encoder refuses it (a number that is NaN or infinite has no JSON form).
WSCommand commandOf(const SignalMessage& message);
std::optional<QByteArray> encodeSignalMessage(const SignalMessage& message);

} // namespace tessara
