#include "tessara/kyc/signalling/TSRWebSocket.h"

#include "tessara/backend/TSRNetwork.h"
#include "tessara/platform/MainThread.h"
#include "tessara/platform/ThreadHandOff.h"

#include <QNetworkRequest>
#include <QThread>
#include <QWebSocket>

namespace tessara {

namespace {

// Qt's client opens ws and wss only; a stream address given as http(s) means the same server.
QUrl webSocketUrl(QUrl url) {
    if (url.scheme() == QLatin1String("http"))
        url.setScheme(QStringLiteral("ws"));
    else if (url.scheme() == QLatin1String("https"))
        url.setScheme(QStringLiteral("wss"));
    return url;
}

// A closing handshake normally ends within milliseconds; past this the socket is dropped.
constexpr int kCloseGraceMs = 1000;

// The size `text` has on the wire, without encoding it: a message near the limit is not copied
// only to be measured.
qsizetype utf8Size(QStringView text) {
    qsizetype size = 0;
    for (const QChar c : text) {
        const char16_t unit = c.unicode();
        // A surrogate pair makes four bytes, two for each half.
        size += unit < 0x80 ? 1 : unit < 0x800 || c.isSurrogate() ? 2 : 3;
    }
    return size;
}

} // namespace

TSRWebSocket::TSRWebSocket(QUrl url, QObject* parent)
    : QObject(parent)
    , url_(std::move(url))
    // Read here, on the main thread, where the shared network client must be created.
    , userAgent_(TSRNetwork::shared().userAgent())
    , thread_(std::make_unique<QThread>())
    , session_(new QObject) {
    thread_->setObjectName(QStringLiteral("TSRWebSocket session"));
    // The last thing the socket's thread does (after its loop, still on it): what it did to the
    // session members happens before the destructor, which waits for this, frees them.
    QObject::connect(
        thread_.get(), &QThread::finished, thread_.get(), [this] { publishHandOff(this); },
        Qt::DirectConnection);
    session_->moveToThread(thread_.get());
    thread_->start();
    pingPongTimer_.setInterval(PING_INTERVAL_MS);
    // A coarse timer may fire up to 5 % early; the service expects the beat every 2 s.
    pingPongTimer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pingPongTimer_, &QTimer::timeout, this,
                     [this] { onSession([this] { pingOnSession(); }); });
}

TSRWebSocket::~TSRWebSocket() {
    if (!disconnected_.load())
        disconnect();
    thread_->wait();
    acceptHandOff(this);
    // The thread has ended, so nothing runs on the session objects any more.
    delete session_;
}

void TSRWebSocket::onSession(std::function<void()> work) {
    QMetaObject::invokeMethod(session_, HandOff(std::move(work)), Qt::QueuedConnection);
}

bool TSRWebSocket::isSessionThread() const {
    return QThread::currentThread() == thread_.get();
}

void TSRWebSocket::connect() {
    if (disconnected_.load())
        return;
    onSession([this] { openOnSession(); });
}

void TSRWebSocket::disconnect() {
    if (disconnected_.exchange(true))
        return;
    if (isMainThread())
        stopPingPong();
    else
        runOnMain(this, [this] { stopPingPong(); });
    onSession([this] {
        closeOnSession();
        finishOnSession();
    });
    if (TSRWebSocketProviderDelegate* delegate = delegate_.exchange(nullptr))
        delegate->socketDidDisconnect(*this);
}

void TSRWebSocket::sendBytes(QByteArray bytes, bool binary) {
    // On the socket's own thread (a join from socketDidConnect) the bytes go out at once.
    if (isSessionThread())
        sendOnSession(bytes, binary);
    else
        onSession([this, bytes = std::move(bytes), binary] { sendOnSession(bytes, binary); });
}

void TSRWebSocket::startPingPong() {
    if (disconnected_.load())
        return;
    pingPongTimer_.start();
    onSession([this] { pingOnSession(); });
}

void TSRWebSocket::stopPingPong() {
    pingPongTimer_.stop();
}

void TSRWebSocket::scheduleReconnect() {
    runOnMain(this, [this] { runOnMainAfter(RECONNECT_DELAY_MS, this, [this] { connect(); }); });
}

void TSRWebSocket::openOnSession() {
    if (disconnected_.load())
        return;
    if (socketTask_)
        forget(socketTask_);
    auto* socket = new QWebSocket(QString(), QWebSocketProtocol::VersionLatest, session_);
    socket->setMaxAllowedIncomingFrameSize(MAX_INCOMING_BYTES);
    socket->setMaxAllowedIncomingMessageSize(MAX_INCOMING_BYTES);
    QObject::connect(socket, &QWebSocket::connected, session_, [this, socket] { onOpened(socket); });
    QObject::connect(socket, &QWebSocket::textMessageReceived, session_,
                     [this, socket](const QString& text) { onText(socket, text); });
    // Binary frames carry nothing for the client, but like pongs they show the link is alive.
    QObject::connect(socket, &QWebSocket::binaryMessageReceived, session_, [this, socket] {
        if (socket == socketTask_)
            silenceTimer_->start();
    });
    QObject::connect(socket, &QWebSocket::pong, session_, [this, socket] {
        if (socket == socketTask_)
            silenceTimer_->start();
    });
    QObject::connect(socket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), session_,
                     [this, socket] { onError(socket); });
    QObject::connect(socket, &QWebSocket::disconnected, session_, [this, socket] { onDisconnected(socket); });
    if (!silenceTimer_) {
        silenceTimer_ = new QTimer(session_);
        silenceTimer_->setSingleShot(true);
        QObject::connect(silenceTimer_, &QTimer::timeout, session_, [this] {
            if (socketTask_)
                failOnSession(socketTask_, QStringLiteral("The request timed out."));
        });
    }
    silenceTimer_->setInterval(timeoutMs_);
    silenceTimer_->start();

    QNetworkRequest request(webSocketUrl(url_));
    request.setRawHeader("User-Agent", userAgent_.toUtf8());
    socketTask_ = socket;
    socket->open(request);
}

void TSRWebSocket::onOpened(QWebSocket* socket) {
    if (socket != socketTask_)
        return;
    silenceTimer_->start();
    if (TSRWebSocketProviderDelegate* delegate = delegate_.load())
        delegate->socketDidConnect(*this);
    Q_EMIT opened();
    runOnMain(this, [this] { startPingPong(); });
}

void TSRWebSocket::onText(QWebSocket* socket, const QString& text) {
    if (socket != socketTask_)
        return;
    silenceTimer_->start();
    // A UTF-16 unit never takes more than three bytes, so the usual small message is not measured.
    if (text.size() * 3 > MAX_TEXT_MESSAGE_BYTES) {
        if (const qsizetype size = utf8Size(text); size > MAX_TEXT_MESSAGE_BYTES) {
            qCCritical(lcWebSocket).noquote() << "dropped a text message of" << size
                                              << "bytes, above the limit of" << MAX_TEXT_MESSAGE_BYTES;
            return;
        }
    }
    if (TSRWebSocketProviderDelegate* delegate = delegate_.load())
        delegate->socketDidReceiveText(*this, text);
}

// Qt reports a dropped connection (no close frame) as an error such as RemoteHostClosedError and
// leaves closeCode() at its stale default, so every error ends the link as a failure: the
// delegate hears of it and the socket connects again.
void TSRWebSocket::onError(QWebSocket* socket) {
    if (socket != socketTask_)
        return;
    const QString words = socket->errorString();
    qCCritical(lcWebSocket).noquote() << "receiving message error" << words;
    failOnSession(socket, words);
}

// Reached without an error only when the service closed with a close frame, so closeCode() is
// the code it sent.
void TSRWebSocket::onDisconnected(QWebSocket* socket) {
    if (closing_.erase(socket)) {
        socket->deleteLater();
        if (finishing_ && closing_.empty())
            thread_->quit();
        return;
    }
    if (socket != socketTask_)
        return;
    const int code = socket->closeCode();
    // Qt's own close for a frame or message past MAX_INCOMING_BYTES arrives here too.
    if (code == QWebSocketProtocol::CloseCodeTooMuchData)
        qCCritical(lcWebSocket).noquote() << "closed for a message too big:" << socket->closeReason();
    forget(socket);
    Q_EMIT closed(code);
    if (code == QWebSocketProtocol::CloseCodeNormal || code == QWebSocketProtocol::CloseCodeGoingAway)
        disconnect();
    else
        scheduleReconnect();
}

void TSRWebSocket::failOnSession(QWebSocket* socket, const QString& words) {
    forget(socket);
    if (TSRWebSocketProviderDelegate* delegate = delegate_.load())
        delegate->socketDidFail(*this, words);
    Q_EMIT failed(words);
    scheduleReconnect();
}

void TSRWebSocket::forget(QWebSocket* socket) {
    if (socket == socketTask_) {
        socketTask_ = nullptr;
        silenceTimer_->stop();
    }
    socket->disconnect(session_);
    socket->abort();
    socket->deleteLater();
}

void TSRWebSocket::sendOnSession(const QByteArray& bytes, bool binary) {
    if (!socketTask_ || socketTask_->state() != QAbstractSocket::ConnectedState)
        return;
    if (binary) {
        if (socketTask_->sendBinaryMessage(bytes) != bytes.size())
            qCCritical(lcWebSocket).noquote() << "sending data error" << socketTask_->errorString();
    } else {
        const QString text = QString::fromUtf8(bytes);
        if (socketTask_->sendTextMessage(text) != text.size())
            qCCritical(lcWebSocket).noquote() << "sending text error" << socketTask_->errorString();
    }
}

void TSRWebSocket::pingOnSession() {
    // A ping written while the handshake is still under way would precede it on the wire.
    if (socketTask_ && socketTask_->state() == QAbstractSocket::ConnectedState)
        socketTask_->ping();
}

void TSRWebSocket::closeOnSession() {
    if (!socketTask_)
        return;
    QWebSocket* socket = socketTask_;
    socketTask_ = nullptr;
    silenceTimer_->stop();
    // Only the end of the close handshake still matters; nothing else reaches the delegate.
    socket->disconnect(session_);
    if (socket->state() == QAbstractSocket::ConnectedState) {
        closing_.insert(socket);
        QObject::connect(socket, &QWebSocket::disconnected, session_,
                         [this, socket] { onDisconnected(socket); });
        socket->close(QWebSocketProtocol::CloseCodeNormal);
    } else {
        socket->abort();
        socket->deleteLater();
    }
}

void TSRWebSocket::finishOnSession() {
    finishing_ = true;
    if (closing_.empty()) {
        thread_->quit();
        return;
    }
    QTimer::singleShot(kCloseGraceMs, session_, [this] {
        for (QWebSocket* socket : closing_) {
            socket->disconnect(session_);
            socket->abort();
        }
        closing_.clear();
        thread_->quit();
    });
}

} // namespace tessara
