#include "host/DemoLog.h"

#include <cstdio>

namespace tessara::demo {

DemoLog::DemoLog(QObject* parent)
    : QObject(parent) {}

void DemoLog::line(const QString& text) {
    lines_.append(text);
    if (echo_) {
        // Flushed at once so a script reading the pipe sees each step as it happens.
        const QByteArray bytes = text.toUtf8() + '\n';
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        std::fflush(stdout);
    }
    Q_EMIT lineAdded(text);
}

} // namespace tessara::demo
