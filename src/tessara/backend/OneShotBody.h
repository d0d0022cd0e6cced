#pragma once

#include <QByteArray>
#include <QIODevice>

namespace tessara {

// A request body that can be read once and never rewound. Qt sends a request again by itself
// when its connection dies before the answer, so a backend killed in the middle of an upload
// would get the file a second time behind the caller's back; a body Qt cannot rewind makes it
// report the failure (ContentReSendError) instead.
class OneShotBody : public QIODevice {
    Q_OBJECT

public:
    explicit OneShotBody(QByteArray bytes, QObject* parent = nullptr);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;
    bool reset() override { return false; }
    bool seek(qint64) override { return false; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray bytes_;
    qint64 offset_ = 0;
};

} // namespace tessara
