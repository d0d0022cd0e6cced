#include "DemoRun.h"

#include "host/Autopilot.h"
#include "host/DemoApp.h"
#include "host/DemoLog.h"
#include "host/SubmissionSummary.h"

#include <QFile>
#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace tessara::demo;

DemoOptions DemoRun::autopilotOptions(const QString& processesDir, const QString& processId) {
    DemoOptions options;
    options.processesDir = processesDir;
    options.processId = processId;
    options.autopilot = true;
    // A verification holds one screen for its whole run, which takes twice as long under the
    // sanitizers; a stuck run still ends well within each test's own limit.
    options.timeoutSeconds = 30;
    return options;
}

DemoRun DemoRun::run(DemoOptions options, int limitMs) {
    DemoRun result;
    DemoApp app(std::move(options));
    app.log().setEchoToStdout(false);
    QSignalSpy finished(&app, &DemoApp::finished);
    app.start();
    if (finished.isEmpty() && !finished.wait(limitMs)) {
        ADD_FAILURE() << "the demo did not finish within " << limitMs << " ms; log:\n"
                      << app.log().lines().join(u'\n').toStdString();
        return result;
    }
    result.exitCode = finished.first().first().toInt();
    result.log = app.log().lines();
    if (app.autopilot()) {
        result.message = app.autopilot()->finalMessage();
        const QString submission = app.autopilot()->submissionId();
        if (!submission.isEmpty()) {
            QNetworkAccessManager network;
            bool done = false;
            SubmissionSummary::fetch(network, app.backendUrl(), submission,
                                     [&](std::optional<QJsonObject> record, QString error) {
                                         if (record)
                                             result.record = *record;
                                         else
                                             ADD_FAILURE() << "no submission record: " << error.toStdString();
                                         done = true;
                                     });
            QDeadlineTimer deadline(5000);
            while (!done && !deadline.hasExpired())
                QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
            for (const QJsonValue& upload : result.record.value(QLatin1String("uploads")).toArray()) {
                QFile file(upload.toObject().value(QLatin1String("storedPath")).toString());
                if (file.open(QIODevice::ReadOnly))
                    result.storedFiles.insert(file.fileName(), file.readAll());
            }
        }
    }
    return result;
}
