#include "tessara/platform/FatalError.h"
#include "tessara/platform/MainThread.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <atomic>
#include <memory>

TEST(MainThread, RunOnMainIsAlwaysQueuedEvenFromTheMainThread) {
    bool ran = false;
    tessara::runOnMain([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(QTest::qWaitFor([&] { return ran; }, 1000));
}

TEST(MainThread, WorkFromAnotherThreadArrivesOnTheMainThread) {
    std::atomic<bool> onMain{false};
    std::atomic<bool> done{false};
    std::unique_ptr<QThread> worker(QThread::create([&] {
        tessara::runOnMain([&] {
            onMain = tessara::isMainThread();
            done = true;
        });
    }));
    worker->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 2000));
    worker->wait();
    EXPECT_TRUE(onMain);
}

TEST(MainThread, DelayedWorkIsDroppedWhenItsContextDies) {
    bool ran = false;
    auto context = std::make_unique<QObject>();
    tessara::runOnMain(context.get(), [&] { ran = true; });
    tessara::runOnMainAfter(10, context.get(), [&] { ran = true; });
    context.reset();
    QTest::qWait(50);
    EXPECT_FALSE(ran);
}

TEST(MainThread, DelayedWorkWaitsAtLeastItsDelay) {
    QElapsedTimer clock;
    clock.start();
    qint64 elapsed = -1;
    QObject context;
    tessara::runOnMainAfter(100, &context, [&] { elapsed = clock.elapsed(); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return elapsed >= 0; }, 2000));
    EXPECT_GE(elapsed, 95);
}

TEST(FatalErrorDeathTest, WritesTheMessageAndAborts) {
    EXPECT_DEATH(tessara::fatalError(QStringLiteral("Form type is nil.")), "Form type is nil\\.");
}
