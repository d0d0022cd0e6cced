#include "tessara/platform/NotificationBus.h"

#include <QObject>
#include <gtest/gtest.h>
#include <memory>

using tessara::NotificationBus;

TEST(NotificationBus, DeliversSynchronouslyInSubscriptionOrderOnlyToTheName) {
    auto& bus = NotificationBus::instance();
    QObject a, b, c;
    QStringList calls;
    bus.subscribe("bus.test.one", &a,
                  [&](const QVariantMap& info) { calls << "a:" + info.value("value").toString(); });
    bus.subscribe("bus.test.one", &b,
                  [&](const QVariantMap& info) { calls << "b:" + info.value("value").toString(); });
    bus.subscribe("bus.test.two", &c, [&](const QVariantMap&) { calls << "c"; });

    bus.post("bus.test.one", {{"value", "x"}});
    // Delivery has ended before post returns.
    EXPECT_EQ(calls, (QStringList{"a:x", "b:x"}));
    bus.unsubscribe(&a);
    bus.unsubscribe(&b);
    bus.unsubscribe(&c);
}

TEST(NotificationBus, HoldsSubscribersWeakly) {
    auto& bus = NotificationBus::instance();
    int calls = 0;
    {
        auto owner = std::make_unique<QObject>();
        bus.subscribe("bus.test.weak", owner.get(), [&](const QVariantMap&) { ++calls; });
        EXPECT_EQ(bus.subscriberCount("bus.test.weak"), 1);
    }
    bus.post("bus.test.weak");
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(bus.subscriberCount("bus.test.weak"), 0);
}

TEST(NotificationBus, HandlerMaySubscribeOrUnsubscribeDuringDelivery) {
    auto& bus = NotificationBus::instance();
    QObject first, second, late;
    int secondCalls = 0, lateCalls = 0;
    bus.subscribe("bus.test.reentrant", &first, [&](const QVariantMap&) {
        bus.unsubscribe(&second);
        bus.subscribe("bus.test.reentrant", &late, [&](const QVariantMap&) { ++lateCalls; });
    });
    bus.subscribe("bus.test.reentrant", &second, [&](const QVariantMap&) { ++secondCalls; });

    bus.post("bus.test.reentrant");
    // The targets of one post are fixed when it starts; later posts see the changes.
    EXPECT_EQ(lateCalls, 0);
    bus.unsubscribe(&first);
    bus.post("bus.test.reentrant");
    EXPECT_EQ(lateCalls, 1);
    EXPECT_EQ(secondCalls, 1);
    bus.unsubscribe(&late);
}
