#include "tessara/platform/FatalError.h"

#include "tessara/platform/Logging.h"

#include <cstdio>
#include <cstdlib>

namespace tessara {

void fatalError(const QString& message) {
    qCCritical(lcTessara).noquote() << "Fatal error:" << message;
    const QByteArray text = message.toUtf8();
    std::fprintf(stderr, "Fatal error: %s\n", text.constData());
    std::fflush(stderr);
    std::abort();
}

} // namespace tessara
