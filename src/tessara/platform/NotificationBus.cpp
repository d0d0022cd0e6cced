#include "tessara/platform/NotificationBus.h"

#include "tessara/platform/Logging.h"

#include <algorithm>

namespace tessara {

NotificationBus& NotificationBus::instance() {
    static NotificationBus bus;
    return bus;
}

void NotificationBus::subscribe(const QString& name, QObject* owner, Handler handler) {
    subscriptions_.push_back({name, QPointer<QObject>(owner), std::move(handler)});
}

void NotificationBus::unsubscribe(QObject* owner) {
    std::erase_if(subscriptions_, [owner](const Subscription& s) { return s.owner.isNull() || s.owner == owner; });
}

void NotificationBus::post(const QString& name, const QVariantMap& userInfo) {
    std::erase_if(subscriptions_, [](const Subscription& s) { return s.owner.isNull(); });
    // Copy the matching handlers first: a handler may subscribe or unsubscribe.
    std::vector<std::pair<QPointer<QObject>, Handler>> targets;
    for (const auto& s : subscriptions_) {
        if (s.name == name)
            targets.emplace_back(s.owner, s.handler);
    }
    for (auto& [owner, handler] : targets) {
        if (owner)
            handler(userInfo);
    }
}

int NotificationBus::subscriberCount(const QString& name) const {
    return int(std::count_if(subscriptions_.begin(), subscriptions_.end(),
                             [&](const Subscription& s) { return s.name == name && !s.owner.isNull(); }));
}

QString NotificationBus::frameworkName(const QString& suffix) {
    return QString::fromLatin1(kFrameworkBundleIdentifier) + QLatin1Char('.') + suffix;
}

} // namespace tessara
