#pragma once

#include <utility>

#if defined(__SANITIZE_THREAD__)
#define TESSARA_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TESSARA_THREAD_SANITIZER 1
#endif
#endif

#ifdef TESSARA_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

namespace tessara {

// Qt hands queued calls and finished threads over through its own code, which ThreadSanitizer does
// not watch, so the order that Qt guarantees is invisible to it. These mark such a hand-off: what
// one thread did before `publishHandOff(key)` happens before what another does after
// `acceptHandOff(key)` on the same key. Outside a ThreadSanitizer build they compile to nothing.
inline void publishHandOff([[maybe_unused]] const void* key) {
#ifdef TESSARA_THREAD_SANITIZER
    __tsan_release(const_cast<void*>(key));
#endif
}

inline void acceptHandOff([[maybe_unused]] const void* key) {
#ifdef TESSARA_THREAD_SANITIZER
    __tsan_acquire(const_cast<void*>(key));
#endif
}

// A callable on its way to another thread's event queue. Qt moves it into the queued call's own
// storage last, so each move or copy publishes from the new place and the call accepts there.
// Whichever thread lets go of the queued call last destroys it, possibly the sender after the
// call has run, so the call publishes again when done and the destructor accepts.
template <typename F> class HandOff {
public:
    explicit HandOff(F f)
        : f_(std::move(f)) {
        publishHandOff(this);
    }
    HandOff(HandOff&& other) noexcept
        : f_(std::move(other.f_)) {
        publishHandOff(this);
    }
    HandOff(const HandOff& other)
        : f_(other.f_) {
        publishHandOff(this);
    }
    HandOff& operator=(const HandOff&) = delete;
    HandOff& operator=(HandOff&&) = delete;
    ~HandOff() { acceptHandOff(this); }

    void operator()() {
        acceptHandOff(this);
        f_();
        publishHandOff(this);
    }

private:
    F f_;
};

} // namespace tessara
