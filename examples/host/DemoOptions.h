#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

namespace tessara::demo {

// What the command line asks of the demo. Parsing is kept apart from the application so the
// rules (defaults, paths relative to the working directory) can be checked without a window.
struct DemoOptions {
    // Empty: embed the reference backend on a free loopback port.
    std::optional<QUrl> backendUrl;
    // Served by the embedded backend.
    QString processesDir;
    QString processId;
    // Set: reopen this step with openStep instead of starting the process.
    std::optional<QString> openDirectionId;
    std::optional<QString> token;
    bool autopilot = false;
    // Empty: the answers file of the sample process, when it exists.
    QString answersFile;
    QString screenshotsDir;
    // Seconds without progress before the autopilot gives up; 0 disables the watchdog.
    int timeoutSeconds = 60;
    bool summary = false;
    // Set: the autopilot ends successfully as soon as this step is on screen (or answered).
    std::optional<QString> untilDirectionId;
    // "system", "synthetic" or "file:PATH" (an absolute path); unset: chosen by defaultCamera.
    std::optional<QString> camera;

    // Parses `arguments` (argv, the program name first). On a usage error returns
    // std::nullopt and sets `error`; `--help` is reported through `helpRequested`.
    static std::optional<DemoOptions> parse(const QStringList& arguments, QString* error,
                                            bool* helpRequested = nullptr);
    static QString helpText();

    // The process of the bundled sample, started when --process is not given.
    static QString defaultProcessId();
    // The directory of bundled processes of this source tree.
    static QString defaultProcessesDir();
    // The device's camera when there is one and a display to look at it, else the drawn one.
    static QString defaultCamera(bool displayPresent, bool cameraPresent);
};

} // namespace tessara::demo
