#pragma once

#include "host/DemoOptions.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <memory>

namespace tessara {
class BackendServer;
class Tessara;
} // namespace tessara

namespace tessara::demo {

class Autopilot;
class DemoLog;
class DemoWindow;

// The demo host application: the window, the backend it talks to (embedded unless --backend is
// given), the SDK entry, and with --autopilot the robot that runs the process. The program's
// main only turns `finished` into its exit code. Main thread only.
class DemoApp : public QObject {
    Q_OBJECT
public:
    explicit DemoApp(DemoOptions options, QObject* parent = nullptr);
    ~DemoApp() override;

    // Starts the backend, shows the window and, with the autopilot, presses the start button.
    // False (with `finished` already emitted) when the backend cannot start.
    bool start();

    DemoLog& log() { return *log_; }
    DemoWindow* window() const { return window_.get(); }
    Autopilot* autopilot() const;
    // The embedded backend, or null when --backend points elsewhere.
    BackendServer* backend() const { return backend_.get(); }
    QUrl backendUrl() const { return backendUrl_; }

Q_SIGNALS:
    // The run is over (autopilot done, or the window closed); `exitCode` is the program's.
    void finished(int exitCode);

private:
    bool startBackend();
    void startAutopilot();
    void startFlow();
    void onStarted(bool success, const QString& error);
    void onClosed(const QString& directionId);
    void onAutopilotFinished(int exitCode, const QString& message);
    void finishRun(int exitCode);
    QString findAnswersFile() const;
    std::optional<QString> stepType(const QString& directionId) const;

    DemoOptions options_;
    std::unique_ptr<DemoLog> log_;
    std::unique_ptr<BackendServer> backend_;
    QUrl backendUrl_;
    std::unique_ptr<Tessara> tessara_;
    std::unique_ptr<DemoWindow> window_;
    QPointer<Autopilot> autopilot_;
    QNetworkAccessManager network_;
    bool ended_ = false;
};

} // namespace tessara::demo
