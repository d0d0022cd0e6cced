#include "tessara/platform/MainThread.h"

#include "tessara/platform/ThreadHandOff.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

namespace tessara {

namespace {
QObject* mainContext() {
    // The application object lives on the main thread, so it is a valid queue target
    // from any thread for as long as the program runs.
    return QCoreApplication::instance();
}
} // namespace

void runOnMain(std::function<void()> fn) {
    QMetaObject::invokeMethod(mainContext(), HandOff(std::move(fn)), Qt::QueuedConnection);
}

void runOnMain(const QObject* context, std::function<void()> fn) {
    QMetaObject::invokeMethod(const_cast<QObject*>(context), HandOff(std::move(fn)), Qt::QueuedConnection);
}

void runOnMainAfter(int milliseconds, const QObject* context, std::function<void()> fn) {
    QTimer::singleShot(milliseconds, context ? context : mainContext(), std::move(fn));
}

bool isMainThread() {
    auto* app = QCoreApplication::instance();
    return app && QThread::currentThread() == app->thread();
}

} // namespace tessara
