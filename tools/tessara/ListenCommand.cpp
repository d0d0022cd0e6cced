#include "ListenCommand.h"

#include "tessara/kyc/signalling/TSRWebSocket.h"

#include <QTimer>
#include <cstdio>

namespace tessara::tool {

namespace {
void printLine(const QByteArray& line) {
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}
} // namespace

ListenCommand::ListenCommand(const QUrl& streamUrl, const QString& userHash, std::optional<double> seconds)
    : seconds_(seconds) {
    TSRSignallingClient::setUserHash(userHash);
    auto socket = std::make_unique<TSRWebSocket>(TSRNativeSignallingClient::socketUrl(streamUrl));
    // The socket tells these after the client has heard of them, so "open" follows the join.
    QObject::connect(socket.get(), &TSRWebSocket::opened, this, [] { printLine("open"); });
    QObject::connect(socket.get(), &TSRWebSocket::failed, this,
                     [](const QString& error) { printLine("failed " + error.toUtf8()); });
    QObject::connect(socket.get(), &TSRWebSocket::closed, this, [this](int code) {
        printLine("closed " + QByteArray::number(code));
        // After 1000 or 1001 the socket stays closed, as in the SDK, so nothing more can come.
        if (code == 1000 || code == 1001) {
            client_->sendByeAndDisconnect();
            loop_.quit();
        }
    });
    client_ = std::make_unique<TSRNativeSignallingClient>(std::move(socket));
    client_->setDelegate(this);
}

ListenCommand::~ListenCommand() {
    client_.reset();
}

int ListenCommand::run() {
    if (seconds_)
        QTimer::singleShot(int(*seconds_ * 1000.0), this, [this] { finish(); });
    client_->webSocket()->connect();
    loop_.exec();
    return 0;
}

void ListenCommand::finish() {
    if (!client_->webSocket())
        return;
    client_->sendByeAndDisconnect();
    printLine("bye");
    loop_.quit();
}

void ListenCommand::printMessage(const SignalMessage& message) {
    const std::string_view command = rawValueUtf8(commandOf(message));
    QByteArray line(command.data(), qsizetype(command.size()));
    // NaN and infinity are numbers to the reader but have no JSON form.
    line += ' ' + encodeSignalMessage(message).value_or("(no JSON form: a number is not finite)");
    printLine(line);
}

void ListenCommand::didReceiveOverlayRectangle(const OverlayRectangle& rectangle) {
    printMessage(rectangle);
}

void ListenCommand::didRemoveOverlayRectangle(const RemoveRectangle& message) {
    printMessage(message);
}

void ListenCommand::didReceiveTrackingCoordinates(double x, double y) {
    printMessage(TrackingCoordinates{WSCommand::trackingCoordinates, x, y});
}

void ListenCommand::didReceiveOCRAction(OCRAction action) {
    printMessage(OCRActionSignal{WSCommand::ocrAction, action});
}

void ListenCommand::didReceiveOCRProgress(float current, float max) {
    printMessage(OCRProgressSignal{WSCommand::ocrProgress, current, max});
}

void ListenCommand::didReceiveQuality(const QString& msg) {
    printMessage(OCRQualityMessage{WSCommand::quality, msg});
}

void ListenCommand::didReceiveStatus(const QString& type) {
    printMessage(KYCStatusSignal{WSCommand::status, type});
    if (isTerminalStatus(type))
        finish();
}

void ListenCommand::didReceiveStartCamera(int capturePosition) {
    printMessage(KYCStartCameraSignal{WSCommand::startCamera,
                                      kycCameraPositionFromCaptureValue(capturePosition).value()});
}

void ListenCommand::didConnectToService() {
    printMessage(NNConnectedCommand{});
}

} // namespace tessara::tool
