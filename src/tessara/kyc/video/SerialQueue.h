#pragma once

#include <QString>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace tessara {

// A serial work queue on its own thread: tasks run one at a time, in order. `suspend` holds back
// the tasks not yet started until `resume`. Destroying the queue runs what is queued unless it is
// suspended, in which case what waits is dropped.
class SerialQueue {
public:
    explicit SerialQueue(QString label);
    ~SerialQueue();
    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    const QString& label() const { return label_; }

    // Queues `task`; returns at once. Safe from any thread.
    void async(std::function<void()> task);
    // Queues `task` and waits until it has run. Never call it from the queue itself.
    void sync(std::function<void()> task);
    void suspend();
    void resume();
    // True when called from a task of this queue.
    bool isCurrent() const { return std::this_thread::get_id() == thread_.get_id(); }

private:
    void run();

    QString label_;
    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<std::function<void()>> tasks_;
    int suspended_ = 0;
    bool stopping_ = false;
    std::thread thread_;
};

} // namespace tessara
