#include "tessara/backend/OneShotBody.h"

#include <algorithm>
#include <cstring>

namespace tessara {

OneShotBody::OneShotBody(QByteArray bytes, QObject* parent)
    : QIODevice(parent)
    , bytes_(std::move(bytes)) {
    open(QIODevice::ReadOnly);
}

qint64 OneShotBody::bytesAvailable() const {
    return bytes_.size() - offset_ + QIODevice::bytesAvailable();
}

qint64 OneShotBody::readData(char* data, qint64 maxSize) {
    const qint64 count = std::min<qint64>(maxSize, bytes_.size() - offset_);
    if (count <= 0)
        return offset_ >= bytes_.size() ? -1 : 0;
    std::memcpy(data, bytes_.constData() + offset_, size_t(count));
    offset_ += count;
    return count;
}

} // namespace tessara
