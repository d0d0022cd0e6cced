#pragma once

#include "tessara/kyc/signalling/TSRWebSocketProvider.h"

#include <QObject>
#include <QString>
#include <memory>

namespace tessara {

// The base of the signalling client: it owns the step's socket and knows the process-wide user hash
// that every join and bye carries.
class TSRSignallingClient : public QObject {
    Q_OBJECT

public:
    // Process-wide. The verification screen writes it (from the step's settings) before it makes a
    // client, so the socket's thread, which reads it for the join, only starts reading afterwards.
    static QString userHash();
    static void setUserHash(const QString& hash);

    // The transport; empty once the step has ended.
    TSRWebSocketProvider* webSocket() const { return webSocket_.get(); }

protected:
    TSRSignallingClient(std::unique_ptr<TSRWebSocketProvider> webSocket, QObject* parent);
    ~TSRSignallingClient() override;

    std::unique_ptr<TSRWebSocketProvider> webSocket_;
};

} // namespace tessara
