#include "host/DemoApp.h"

#include <QApplication>
#include <QTimer>
#include <cstdio>

int main(int argc, char** argv) {
    // The command line is read before the application exists, so --help and mistakes are
    // answered on a machine without a display too. Qt's own options are therefore not taken
    // from the command line; its environment variables (QT_QPA_PLATFORM, ...) still work.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    QString error;
    bool help = false;
    std::optional<tessara::demo::DemoOptions> options =
        tessara::demo::DemoOptions::parse(arguments, &error, &help);
    if (help) {
        std::fputs(qPrintable(tessara::demo::DemoOptions::helpText()), stdout);
        return 0;
    }
    if (!options) {
        std::fprintf(stderr, "tessara-demo: %s\n\n%s", qPrintable(error),
                     qPrintable(tessara::demo::DemoOptions::helpText()));
        return 64;
    }

    QApplication app(argc, argv);
    // The SDK reports these in its User-Agent.
    QApplication::setApplicationName(QStringLiteral("Tessara Demo"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setOrganizationDomain(QStringLiteral("demo.tessara.example"));

    tessara::demo::DemoApp demo(*options);
    QObject::connect(&demo, &tessara::demo::DemoApp::finished, &app,
                     [](int code) { QApplication::exit(code); });
    // start() may finish the run at once; the exit code then waits for the event loop.
    QTimer::singleShot(0, &demo, [&demo] { demo.start(); });
    return QApplication::exec();
}
