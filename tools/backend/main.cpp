// tessara-backend: the reference backend as a program of its own.
#include "backend/BackendServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <cstdio>

namespace {

void printError(const QString& text) {
    std::fputs(text.toUtf8().append('\n').constData(), stderr);
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tessara-backend"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Reference backend for Tessara: serves the process definitions of a folder over the HTTP interface "
        "the SDK speaks, with a verification-service simulator on the WebSocket paths ending in mobile/h264. "
        "Every request is logged as one line on standard output."));
    parser.addHelpOption();
    const QCommandLineOption portOption(
        QStringLiteral("port"), QStringLiteral("Port to listen on; 0 picks a free one (default 8080)."),
        QStringLiteral("P"), QStringLiteral("8080"));
    const QCommandLineOption listenOption(QStringLiteral("listen"),
                                          QStringLiteral("Address to listen on (default 127.0.0.1)."),
                                          QStringLiteral("ADDRESS"), QStringLiteral("127.0.0.1"));
    const QCommandLineOption processesOption(
        QStringLiteral("processes"),
        QStringLiteral("Folder of process definitions, or one process folder (default: %1).")
            .arg(QStringLiteral(TESSARA_DEFAULT_PROCESSES_DIR)),
        QStringLiteral("DIR"), QStringLiteral(TESSARA_DEFAULT_PROCESSES_DIR));
    const QCommandLineOption storageOption(
        QStringLiteral("storage"),
        QStringLiteral(
            "Folder for uploaded files and received verification streams (default: a temporary folder)."),
        QStringLiteral("DIR"));
    const QCommandLineOption quietOption(QStringLiteral("quiet"), QStringLiteral("Do not log requests."));
    parser.addOptions({portOption, listenOption, processesOption, storageOption, quietOption});
    parser.process(app);

    bool ok = false;
    const uint port = parser.value(portOption).toUInt(&ok);
    if (!ok || port > 65535) {
        printError(QStringLiteral("tessara-backend: --port must be a number from 0 to 65535"));
        return 2;
    }
    const QHostAddress address(parser.value(listenOption));
    if (address.isNull()) {
        printError(QStringLiteral("tessara-backend: --listen must be an IP address"));
        return 2;
    }

    std::unique_ptr<tessara::BackendServer> server =
        parser.isSet(storageOption) ? std::make_unique<tessara::BackendServer>(parser.value(storageOption))
                                    : std::make_unique<tessara::BackendServer>();
    const QStringList errors = server->loadProcesses(parser.value(processesOption));
    if (!errors.isEmpty()) {
        printError(QStringLiteral("tessara-backend: the process definitions have problems:"));
        for (const QString& error : errors)
            printError(QStringLiteral("  ") + error);
        return 1;
    }
    if (parser.isSet(quietOption))
        server->setRequestLogger({});

    const quint16 listening = server->listen(quint16(port), address);
    if (listening == 0) {
        printError(
            QStringLiteral("tessara-backend: cannot listen on %1:%2").arg(address.toString()).arg(port));
        return 1;
    }
    QUrl url = server->baseUrl();
    std::printf("tessara-backend listening on %s\n", url.toString().toUtf8().constData());
    std::fflush(stdout);
    return app.exec();
}
