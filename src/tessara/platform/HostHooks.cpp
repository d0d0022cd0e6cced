#include "tessara/platform/HostHooks.h"

#include <QDesktopServices>

namespace tessara {

HostHooks& HostHooks::instance() {
    static HostHooks hooks;
    return hooks;
}

void HostHooks::fireHaptic() {
    ++hapticCount;
    if (haptic)
        haptic();
}

bool HostHooks::open(const QUrl& url) {
    ++openUrlCount;
    return openUrl ? openUrl(url) : QDesktopServices::openUrl(url);
}

void HostHooks::disableIdleTimer(bool disabled) {
    ++idleTimerCount;
    idleTimerDisabled = disabled;
    if (setIdleTimerDisabled)
        setIdleTimerDisabled(disabled);
}

} // namespace tessara
