#include "tessara/ui/Hairline.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace tessara {

double hairlineWidth(const QWidget* widget) {
    double ratio = 1.0;
    if (widget)
        ratio = widget->devicePixelRatioF();
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        ratio = screen->devicePixelRatio();
    return ratio > 0.0 ? 1.0 / ratio : 1.0;
}

} // namespace tessara
