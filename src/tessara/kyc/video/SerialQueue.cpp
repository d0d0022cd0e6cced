#include "tessara/kyc/video/SerialQueue.h"

#include <future>

namespace tessara {

SerialQueue::SerialQueue(QString label)
    : label_(std::move(label))
    , thread_([this] { run(); }) {}

SerialQueue::~SerialQueue() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void SerialQueue::async(std::function<void()> task) {
    {
        std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    wake_.notify_all();
}

void SerialQueue::sync(std::function<void()> task) {
    std::promise<void> done;
    async([&] {
        task();
        done.set_value();
    });
    done.get_future().wait();
}

void SerialQueue::suspend() {
    std::lock_guard lock(mutex_);
    ++suspended_;
}

void SerialQueue::resume() {
    {
        std::lock_guard lock(mutex_);
        --suspended_;
    }
    wake_.notify_all();
}

void SerialQueue::run() {
    for (;;) {
        std::function<void()> task;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || (suspended_ <= 0 && !tasks_.empty()); });
            if (suspended_ > 0 || tasks_.empty())
                return; // stopping: a suspended queue drops what waits, a drained one is done
            task = std::move(tasks_.front());
            tasks_.pop_front();
        }
        task();
    }
}

} // namespace tessara
