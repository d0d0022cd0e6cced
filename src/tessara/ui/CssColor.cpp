#include "tessara/ui/CssColor.h"

namespace tessara {

QString cssColor(const QColor& c) {
    return QStringLiteral("rgba(%1,%2,%3,%4)")
        .arg(c.red())
        .arg(c.green())
        .arg(c.blue())
        .arg(c.alphaF(), 0, 'f', 3);
}

} // namespace tessara
