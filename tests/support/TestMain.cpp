#include <QApplication>
#include <gtest/gtest.h>

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
