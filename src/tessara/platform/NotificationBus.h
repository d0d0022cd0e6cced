#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>
#include <functional>
#include <vector>

namespace tessara {

// The in-process notification centre: names map to subscribers, delivery is
// synchronous and finished before `post` returns. Subscribers are held weakly through
// their owner object: once the owner is destroyed its callbacks are dropped. That hold lets
// go only in ~QObject, so an owner whose handler uses its own members calls `unsubscribe`
// in its destructor; otherwise a post from a child being destroyed could reach it.
// Main thread only.
class NotificationBus {
public:
    using Handler = std::function<void(const QVariantMap& userInfo)>;

    static NotificationBus& instance();

    // Subscribes `owner` to `name`. Several subscriptions per owner are allowed.
    void subscribe(const QString& name, QObject* owner, Handler handler);
    // Removes every subscription of `owner` (all names).
    void unsubscribe(QObject* owner);
    // Calls every live subscriber of `name`, in subscription order.
    void post(const QString& name, const QVariantMap& userInfo = {});

    // Number of live subscriptions to `name`.
    int subscriberCount(const QString& name) const;

    // "<bundle identifier>.<suffix>", the name under which framework notifications travel.
    static QString frameworkName(const QString& suffix);

private:
    struct Subscription {
        QString name;
        QPointer<QObject> owner;
        Handler handler;
    };
    std::vector<Subscription> subscriptions_;
};

} // namespace tessara
