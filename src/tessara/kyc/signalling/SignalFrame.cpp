#include "tessara/kyc/signalling/SignalFrame.h"

#include "tessara/kyc/signalling/SignalCoding.h"
#include "tessara/platform/FatalError.h"

namespace tessara {

namespace {

template <typename T> SignalFrame decodeAs(QByteArrayView utf8, WSCommand command) {
    SignalFrame frame;
    if (auto decoded = decodeDocument<T>(utf8)) {
        frame.kind = SignalFrame::Kind::message;
        frame.message = std::move(*decoded);
    } else {
        frame.kind = SignalFrame::Kind::undecodable;
        const std::string_view name = rawValueUtf8(command);
        frame.error = QStringLiteral("The \"%1\" message could not be decoded: %2")
                          .arg(QLatin1StringView(name.data(), qsizetype(name.size())),
                               QString::fromUtf8(utf8.data(), utf8.size()));
    }
    return frame;
}

} // namespace

SignalFrame SignalFrame::read(QByteArrayView utf8) {
    const auto dom = JsonDom::parse(utf8);
    if (!dom)
        fatalError(QStringLiteral("A signalling frame is no JSON: %1")
                       .arg(QString::fromUtf8(utf8.data(), utf8.size())));
    const JsonValue root = dom->root();
    if (root.kind() != JsonDom::Kind::object)
        fatalError(QStringLiteral("A signalling frame is no JSON object: %1")
                       .arg(QString::fromUtf8(utf8.data(), utf8.size())));
    const JsonValue cmd = root.member("cmd");
    if (!cmd.isValid())
        return {};
    if (cmd.kind() != JsonDom::Kind::string)
        fatalError(QStringLiteral("The \"cmd\" of a signalling frame is no string: %1")
                       .arg(QString::fromUtf8(utf8.data(), utf8.size())));
    const auto command = wsCommandFromRaw(cmd.text());
    if (!command)
        return {};
    switch (*command) {
    case WSCommand::bye:
    case WSCommand::heartbeat:
    case WSCommand::join:
        return {};
    case WSCommand::overlayRectangle:
        return decodeAs<OverlayRectangle>(utf8, *command);
    case WSCommand::removeOverlayRectangle:
        return decodeAs<RemoveRectangle>(utf8, *command);
    case WSCommand::trackingCoordinates:
        return decodeAs<TrackingCoordinates>(utf8, *command);
    case WSCommand::ocrAction:
        return decodeAs<OCRActionSignal>(utf8, *command);
    case WSCommand::ocrProgress:
        return decodeAs<OCRProgressSignal>(utf8, *command);
    case WSCommand::quality:
        return decodeAs<OCRQualityMessage>(utf8, *command);
    case WSCommand::status:
        return decodeAs<KYCStatusSignal>(utf8, *command);
    case WSCommand::startCamera:
        return decodeAs<KYCStartCameraSignal>(utf8, *command);
    case WSCommand::nnConnected:
        return {Kind::message, NNConnectedCommand{}, {}};
    }
    return {};
}

WSCommand commandOf(const SignalMessage& message) {
    return std::visit([](const auto& value) { return value.cmd; }, message);
}

std::optional<QByteArray> encodeSignalMessage(const SignalMessage& message) {
    return std::visit([](const auto& value) { return encodeDocument<std::decay_t<decltype(value)>>(value); },
                      message);
}

} // namespace tessara
