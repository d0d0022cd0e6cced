#include "tessara/kyc/signalling/TSRNativeSignallingClient.h"

#include "tessara/kyc/signalling/ByeSignal.h"
#include "tessara/kyc/signalling/JoinSignal.h"
#include "tessara/platform/MainThread.h"

#include <QPointer>

namespace tessara {

namespace {
template <typename... Handlers> struct Overloaded : Handlers... { using Handlers::operator()...; };
// Clang before 17 cannot deduce an aggregate's template arguments without a guide.
template <typename... Handlers> Overloaded(Handlers...) -> Overloaded<Handlers...>;
} // namespace

TSRNativeSignallingClient::TSRNativeSignallingClient(std::unique_ptr<TSRWebSocketProvider> webSocket,
                                                     QObject* parent)
    : TSRSignallingClient(std::move(webSocket), parent) {
    if (webSocket_)
        webSocket_->setDelegate(this);
}

TSRNativeSignallingClient::~TSRNativeSignallingClient() {
    // The socket's thread calls into this object; it must be gone before this object is.
    delegate_.store(nullptr);
    webSocket_.reset();
}

QUrl TSRNativeSignallingClient::socketUrl(const QUrl& streamUrl) {
    QUrl url = streamUrl;
    QString path = url.path();
    if (!path.endsWith(QLatin1Char('/')))
        path += QLatin1Char('/');
    url.setPath(path + QStringLiteral("mobile/h264"));
    return url;
}

void TSRNativeSignallingClient::sendByeAndDisconnect() {
    if (!webSocket_)
        return;
    webSocket_->send(ByeSignal{WSCommand::bye, userHash()});
    webSocket_->disconnect();
    webSocket_.reset();
}

void TSRNativeSignallingClient::socketDidConnect(TSRWebSocketProvider& socket) {
    socket.send(JoinSignal{WSCommand::join, userHash(), false, false});
    if (TSRNativeSignallingDelegate* delegate = delegate_.load())
        delegate->setSocketConnected(true);
}

void TSRNativeSignallingClient::socketDidFail(TSRWebSocketProvider&, const QString&) {
    if (TSRNativeSignallingDelegate* delegate = delegate_.load()) {
        delegate->setSocketConnected(false);
        delegate->stopFramesAfterSocketFailure();
    }
}

void TSRNativeSignallingClient::socketDidDisconnect(TSRWebSocketProvider&) {
    if (TSRNativeSignallingDelegate* delegate = delegate_.load())
        delegate->setSocketConnected(false);
}

void TSRNativeSignallingClient::socketDidReceiveText(TSRWebSocketProvider&, const QString& text) {
    SignalFrame frame = SignalFrame::read(text.toUtf8());
    if (frame.kind == SignalFrame::Kind::ignored)
        return;
    if (frame.kind == SignalFrame::Kind::undecodable) {
        qCCritical(lcWebSocket).noquote() << frame.error;
        return;
    }
    if (TSRNativeSignallingDelegate* delegate = delegate_.load())
        handOver(*delegate, std::move(*frame.message));
}

void TSRNativeSignallingClient::handOver(TSRNativeSignallingDelegate& delegate, SignalMessage message) {
    // The flags the screen reads off the main thread are written before the hop, so they can be
    // seen set while the call is still queued.
    if (const auto* start = std::get_if<KYCStartCameraSignal>(&message))
        delegate.setCurrentCameraPosition(capturePositionValue(start->type));
    else if (std::holds_alternative<NNConnectedCommand>(message))
        delegate.setServerIsReadyForFrames(true);

    // A screen that is a QObject is held weakly; otherwise the call lives as long as this client.
    auto* screen = dynamic_cast<QObject*>(&delegate);
    const QObject* context = screen ? screen : this;
    runOnMain(context, [this, target = &delegate, guard = QPointer<const QObject>(this),
                        message = std::move(message)] {
        // A delegate that was cleared or replaced meanwhile no longer hears this message.
        if (!guard || delegate_.load() != target)
            return;
        std::visit(Overloaded{
                       [&](const OverlayRectangle& m) { target->didReceiveOverlayRectangle(m); },
                       [&](const RemoveRectangle& m) { target->didRemoveOverlayRectangle(m); },
                       [&](const TrackingCoordinates& m) { target->didReceiveTrackingCoordinates(m.x, m.y); },
                       [&](const OCRActionSignal& m) { target->didReceiveOCRAction(m.type); },
                       [&](const OCRProgressSignal& m) { target->didReceiveOCRProgress(m.current, m.max); },
                       [&](const OCRQualityMessage& m) { target->didReceiveQuality(m.msg); },
                       [&](const KYCStatusSignal& m) { target->didReceiveStatus(m.type); },
                       [&](const KYCStartCameraSignal& m) {
                           target->didReceiveStartCamera(capturePositionValue(m.type));
                       },
                       [&](const NNConnectedCommand&) { target->didConnectToService(); },
                   },
                   message);
    });
}

} // namespace tessara
