#include "tessara/kyc/signalling/TSRSignallingClient.h"

namespace tessara {

namespace {
QString& storedUserHash() {
    static QString hash;
    return hash;
}
} // namespace

QString TSRSignallingClient::userHash() {
    return storedUserHash();
}

void TSRSignallingClient::setUserHash(const QString& hash) {
    storedUserHash() = hash;
}

TSRSignallingClient::TSRSignallingClient(std::unique_ptr<TSRWebSocketProvider> webSocket, QObject* parent)
    : QObject(parent)
    , webSocket_(std::move(webSocket)) {}

TSRSignallingClient::~TSRSignallingClient() = default;

} // namespace tessara
