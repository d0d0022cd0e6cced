#pragma once

#include <QObject>

#include <functional>

namespace tessara {

// Queues `fn` on the main thread's event loop; it never runs synchronously, even when
// called from the main thread. With a `context`, the call is dropped once the context
// is destroyed (the weak hold that async work needs).
void runOnMain(std::function<void()> fn);
void runOnMain(const QObject* context, std::function<void()> fn);

// Runs `fn` on the main thread after `milliseconds`, dropped if `context` dies first.
void runOnMainAfter(int milliseconds, const QObject* context, std::function<void()> fn);

// True when the caller is on the application's main thread.
bool isMainThread();

} // namespace tessara
