#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <functional>

namespace tessara {

// Small platform services a host may replace. Defaults do nothing (haptics, idle timer)
// or use the desktop's services (opening URLs). Counters let tests observe the calls.
// Main thread only.
struct HostHooks {
    // A light haptic tap; mobile hosts may route this to the device.
    std::function<void()> haptic;
    // Keeps the screen awake while `true` (the verification step asks for it).
    std::function<void(bool)> setIdleTimerDisabled;
    // Opens an external URL; defaults to QDesktopServices::openUrl.
    std::function<bool(const QUrl&)> openUrl;
    // Which camera the verification step films with: "system" (the device's camera),
    // "synthetic" (a drawn document and face) or "file:PATH" (raw NV12 frames played in a loop).
    QString camera = QStringLiteral("system");
    // URL of the system settings page for camera permission, if the platform has one.
    QUrl settingsUrl;
    // The host application's own localisations, most preferred first (default none).
    QStringList appLocalisations;
    // The host's build number, reported in the User-Agent (default "1").
    QString appBuildNumber = QStringLiteral("1");

    int hapticCount = 0;
    int openUrlCount = 0;
    // The last idle-timer wish and how many times it was expressed.
    bool idleTimerDisabled = false;
    int idleTimerCount = 0;

    static HostHooks& instance();

    void fireHaptic();
    bool open(const QUrl& url);
    void disableIdleTimer(bool disabled);
};

} // namespace tessara
