#include "host/DemoOptions.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>

namespace tessara::demo {

namespace {

struct Parser {
    QCommandLineParser parser;
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")};
    QCommandLineOption backend{QStringLiteral("backend"),
                               QStringLiteral("Use the backend at URL instead of the embedded one."),
                               QStringLiteral("URL")};
    QCommandLineOption processes{
        QStringLiteral("processes"),
        QStringLiteral("Directory of process files the embedded backend serves (default: the "
                       "sample processes of the source tree)."),
        QStringLiteral("DIR")};
    QCommandLineOption process{QStringLiteral("process"),
                               QStringLiteral("Process to start (default credit-request)."),
                               QStringLiteral("ID")};
    QCommandLineOption open{QStringLiteral("open"),
                            QStringLiteral("Reopen the step DIRECTION_ID of a running process instead of "
                                           "starting one."),
                            QStringLiteral("DIRECTION_ID")};
    QCommandLineOption token{QStringLiteral("token"), QStringLiteral("Calling service token sent at start."),
                             QStringLiteral("T")};
    QCommandLineOption autopilot{QStringLiteral("autopilot"),
                                 QStringLiteral("Fill every step from the answers and go forward alone.")};
    QCommandLineOption answers{QStringLiteral("answers"),
                               QStringLiteral("JSON object: field key -> what to enter."),
                               QStringLiteral("FILE")};
    QCommandLineOption screenshots{QStringLiteral("screenshots"),
                                   QStringLiteral("Write a PNG of every screen and alert into DIR."),
                                   QStringLiteral("DIR")};
    QCommandLineOption timeout{
        QStringLiteral("timeout"),
        QStringLiteral("Give up (exit 2) after S seconds without progress (default 60, "
                       "0 = never)."),
        QStringLiteral("S")};
    QCommandLineOption summary{QStringLiteral("summary"),
                               QStringLiteral("At the end print what the backend received.")};
    QCommandLineOption until{
        QStringLiteral("until"),
        QStringLiteral("Autopilot: stop successfully when step DIRECTION_ID is reached."),
        QStringLiteral("DIRECTION_ID")};
    QCommandLineOption camera{
        QStringLiteral("camera"),
        QStringLiteral("What the verification step films: system (the device's camera), synthetic (a drawn "
                       "document and face) or file:PATH (raw NV12 frames in a loop). Default: system when a "
                       "camera and a display are present, else synthetic."),
        QStringLiteral("CAMERA")};

    Parser() {
        parser.setApplicationDescription(
            QStringLiteral("A host application that runs a server-defined process through the Tessara SDK.\n"
                           "Without --backend it embeds the reference backend on a free loopback port.\n"
                           "Exit codes with --autopilot: 0 done, 1 start failed or answers rejected, 2 "
                           "time-out, 3 step kind not supported by this build."));
        parser.addOptions({help, backend, processes, process, open, token, autopilot, answers, screenshots,
                           timeout, summary, until, camera});
    }
};

// Paths given on the command line are meant relative to where the user typed them.
QString absolutePath(const QString& path) {
    return QFileInfo(path).absoluteFilePath();
}

} // namespace

QString DemoOptions::defaultProcessId() {
    return QStringLiteral("credit-request");
}

QString DemoOptions::defaultProcessesDir() {
    return QStringLiteral(TESSARA_DEMO_PROCESSES_DIR);
}

QString DemoOptions::defaultCamera(bool displayPresent, bool cameraPresent) {
    return displayPresent && cameraPresent ? QStringLiteral("system") : QStringLiteral("synthetic");
}

QString DemoOptions::helpText() {
    // Asked before any application object exists, when Qt cannot know the program's name.
    return Parser().parser.helpText().replace(QStringLiteral("<executable_name>"),
                                              QStringLiteral("tessara-demo"));
}

std::optional<DemoOptions> DemoOptions::parse(const QStringList& arguments, QString* error,
                                              bool* helpRequested) {
    Parser p;
    if (helpRequested)
        *helpRequested = false;
    if (!p.parser.parse(arguments)) {
        *error = p.parser.errorText();
        return std::nullopt;
    }
    if (!p.parser.positionalArguments().isEmpty()) {
        *error = QStringLiteral("Unexpected argument: %1").arg(p.parser.positionalArguments().first());
        return std::nullopt;
    }
    if (p.parser.isSet(p.help) && helpRequested)
        *helpRequested = true;

    DemoOptions o;
    if (p.parser.isSet(p.backend)) {
        const QUrl url(p.parser.value(p.backend), QUrl::StrictMode);
        if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) {
            *error =
                QStringLiteral("--backend needs an absolute URL such as http://127.0.0.1:8080, not \"%1\"")
                    .arg(p.parser.value(p.backend));
            return std::nullopt;
        }
        o.backendUrl = url;
    }
    o.processesDir =
        p.parser.isSet(p.processes) ? absolutePath(p.parser.value(p.processes)) : defaultProcessesDir();
    o.processId = p.parser.isSet(p.process) ? p.parser.value(p.process) : defaultProcessId();
    if (p.parser.isSet(p.open))
        o.openDirectionId = p.parser.value(p.open);
    if (p.parser.isSet(p.token))
        o.token = p.parser.value(p.token);
    o.autopilot = p.parser.isSet(p.autopilot);
    if (p.parser.isSet(p.answers))
        o.answersFile = absolutePath(p.parser.value(p.answers));
    if (p.parser.isSet(p.screenshots))
        o.screenshotsDir = absolutePath(p.parser.value(p.screenshots));
    if (p.parser.isSet(p.timeout)) {
        bool ok = false;
        o.timeoutSeconds = p.parser.value(p.timeout).toInt(&ok);
        if (!ok || o.timeoutSeconds < 0) {
            *error = QStringLiteral("--timeout needs a whole number of seconds, not \"%1\"")
                         .arg(p.parser.value(p.timeout));
            return std::nullopt;
        }
    }
    o.summary = p.parser.isSet(p.summary);
    if (p.parser.isSet(p.until))
        o.untilDirectionId = p.parser.value(p.until);
    if (p.parser.isSet(p.camera)) {
        const QString camera = p.parser.value(p.camera);
        const QString path = camera.startsWith(QLatin1String("file:")) ? camera.mid(5) : QString();
        if (camera == QLatin1String("system") || camera == QLatin1String("synthetic")) {
            o.camera = camera;
        } else if (!path.isEmpty()) {
            o.camera = QStringLiteral("file:") + absolutePath(path);
        } else {
            *error = QStringLiteral("--camera is system, synthetic or file:PATH, not \"%1\"").arg(camera);
            return std::nullopt;
        }
    }
    if (o.untilDirectionId && !o.autopilot) {
        *error = QStringLiteral("--until only makes sense with --autopilot");
        return std::nullopt;
    }
    return o;
}

} // namespace tessara::demo
