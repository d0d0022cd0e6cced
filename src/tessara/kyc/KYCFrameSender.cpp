#include "tessara/kyc/KYCFrameSender.h"

#include "tessara/kyc/signalling/TSRWebSocketProvider.h"

namespace tessara {

void KYCFrameSender::attach(TSRWebSocketProvider* socket) {
    std::lock_guard lock(mutex_);
    socket_ = socket;
}

void KYCFrameSender::send(QByteArray unit) {
    ++count_;
    if (!socketConnected.load())
        return;
    std::lock_guard lock(mutex_);
    if (!socket_)
        return;
    socket_->sendBytes(std::move(unit), true);
    ++sent_;
}

} // namespace tessara
