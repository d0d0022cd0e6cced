#pragma once

#include "host/DemoOptions.h"

#include <QByteArray>
#include <QHash>
#include <QJsonObject>
#include <QString>
#include <QStringList>

// One run of the demo host in this process, autopilot on, and what came of it.
struct DemoRun {
    int exitCode = -1;
    QString message;    // the autopilot's last word
    QStringList log;    // every line the demo printed
    QJsonObject record; // GET "/_demo/submissions/{id}" after the run; empty without a submission
    // The bytes of each stored upload, by stored path, read before the backend (and its
    // temporary storage) goes away with the demo.
    QHash<QString, QByteArray> storedFiles;

    // Runs until the demo finishes (or `limitMs` passes, which fails the test).
    static DemoRun run(tessara::demo::DemoOptions options, int limitMs = 30000);
    // Options for the embedded backend serving `processesDir`, autopilot on, no pictures.
    static tessara::demo::DemoOptions autopilotOptions(const QString& processesDir, const QString& processId);
};
