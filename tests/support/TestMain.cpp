#include <QApplication>
#include <gtest/gtest.h>

#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#include <cstdarg>
#include <dlfcn.h>
#include <sched.h>

// QProcess starts programs with a vfork-like clone (CLONE_VM | CLONE_VFORK). The clone wrapper of
// clang 14's ThreadSanitizer treats every clone as a fork and, with the memory shared, both parent
// and child re-attach the one thread state: the runtime aborts with "CHECK failed ... !thr->slot".
// Such a child only calls exec, so it is started directly, as before that wrapper existed; every
// other clone (the death tests' own) still goes through the sanitizer.
extern "C" int __interceptor_clone(int (*fn)(void*), void* stack, int flags, void* arg, pid_t* parentTid,
                                   void* tls, pid_t* childTid);

extern "C" int clone(int (*fn)(void*), void* stack, int flags, void* arg, ...) {
    va_list rest;
    va_start(rest, arg);
    auto* parentTid = va_arg(rest, pid_t*);
    auto* tls = va_arg(rest, void*);
    auto* childTid = va_arg(rest, pid_t*);
    va_end(rest);
    if (!(flags & CLONE_VM))
        return __interceptor_clone(fn, stack, flags, arg, parentTid, tls, childTid);
    using Clone = int (*)(int (*)(void*), void*, int, void*, ...);
    static const auto systemClone = reinterpret_cast<Clone>(dlsym(RTLD_NEXT, "clone"));
    return systemClone(fn, stack, flags, arg, parentTid, tls, childTid);
}
#endif
#endif

// Every test program runs with a QApplication on the offscreen platform, so screens,
// timers and network replies behave as they do in a host application.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    ::testing::InitGoogleTest(&argc, argv);
    // Death tests fork; "threadsafe" re-executes the binary so Qt's threads are not inherited.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
