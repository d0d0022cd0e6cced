#include "host/SubmissionSummary.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace tessara::demo {

QUrl SubmissionSummary::recordUrl(const QUrl& backend, const QString& submissionId) {
    QUrl url = backend;
    QString path = url.path();
    if (path.endsWith(u'/'))
        path.chop(1);
    url.setPath(path + QStringLiteral("/_demo/submissions/") + submissionId);
    url.setQuery(QString());
    return url;
}

void SubmissionSummary::fetch(QNetworkAccessManager& network, const QUrl& backend,
                              const QString& submissionId, Callback callback) {
    QNetworkRequest request(recordUrl(backend, submissionId));
    request.setTransferTimeout(10000);
    QNetworkReply* reply = network.get(request);
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply, callback = std::move(callback)] {
        reply->deleteLater();
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const QByteArray body = reply->readAll();
        if (reply->error() != QNetworkReply::NoError && status == 0) {
            callback(std::nullopt, reply->errorString());
            return;
        }
        if (status != 200) {
            callback(std::nullopt, QStringLiteral("the backend answered %1 to %2: %3")
                                       .arg(status)
                                       .arg(reply->url().toString(), QString::fromUtf8(body.left(300))));
            return;
        }
        const QJsonDocument doc = QJsonDocument::fromJson(body);
        if (!doc.isObject()) {
            callback(std::nullopt, QStringLiteral("the submission record from %1 is no JSON object")
                                       .arg(reply->url().toString()));
            return;
        }
        callback(doc.object(), {});
    });
}

QStringList SubmissionSummary::format(const QJsonObject& record) {
    QStringList lines;
    lines << QStringLiteral("summary of submission %1 (process %2)")
                 .arg(record.value(QLatin1String("submissionId")).toString(),
                      record.value(QLatin1String("processId")).toString());

    QStringList steps;
    for (const QJsonValue& step : record.value(QLatin1String("steps")).toArray())
        steps << step.toString();
    lines << QStringLiteral("  steps visited (%1): %2")
                 .arg(steps.size())
                 .arg(steps.join(QStringLiteral(" -> ")));

    const QJsonArray values = record.value(QLatin1String("values")).toArray();
    lines << QStringLiteral("  values received (%1):").arg(values.size());
    for (const QJsonValue& v : values) {
        const QJsonObject value = v.toObject();
        lines << QStringLiteral("    [%1] %2 = %3")
                     .arg(value.value(QLatin1String("step")).toString(),
                          value.value(QLatin1String("key")).toString(),
                          value.value(QLatin1String("value")).toString());
    }

    const QJsonArray uploads = record.value(QLatin1String("uploads")).toArray();
    lines << QStringLiteral("  files stored (%1):").arg(uploads.size());
    for (const QJsonValue& u : uploads) {
        const QJsonObject upload = u.toObject();
        lines << QStringLiteral("    [%1] %2: %3, %4 bytes, %5 -> %6")
                     .arg(upload.value(QLatin1String("step")).toString(),
                          upload.value(QLatin1String("key")).toString(),
                          upload.value(QLatin1String("fileName")).toString())
                     .arg(qint64(upload.value(QLatin1String("size")).toDouble()))
                     .arg(upload.value(QLatin1String("contentType")).toString(),
                          upload.value(QLatin1String("storedPath")).toString());
    }
    const QJsonObject seen = record.value(QLatin1String("verification")).toObject();
    if (!seen.isEmpty()) {
        auto number = [&](const char* key) { return qint64(seen.value(QLatin1String(key)).toDouble()); };
        const QJsonValue first = seen.value(QLatin1String("firstPictureMs"));
        lines << QStringLiteral("  verification (script %1, attempt %2): %3")
                     .arg(seen.value(QLatin1String("script")).toString())
                     .arg(number("attempt"))
                     .arg(seen.value(QLatin1String("status")).toString());
        lines << QStringLiteral(
                     "    %1 pictures decoded, the last %2x%3, %4 key frames; profile %5, level %6")
                     .arg(number("pictures"))
                     .arg(number("width"))
                     .arg(number("height"))
                     .arg(number("keyFrames"))
                     .arg(number("profile"))
                     .arg(number("level"));
        lines << QStringLiteral("    %1 units, %2 bytes; first picture %3; %4 reconnects")
                     .arg(number("units"))
                     .arg(number("bytes"))
                     .arg(first.isDouble()
                              ? QStringLiteral("%1 ms after the join").arg(qint64(first.toDouble()))
                              : QStringLiteral("never"))
                     .arg(number("reconnects"));
        const QString stream = seen.value(QLatin1String("streamPath")).toString();
        if (!stream.isEmpty())
            lines << QStringLiteral("    stream: %1").arg(stream);
    }
    return lines;
}

QStringList SubmissionSummary::formatTimings(const std::vector<StepTiming>& timings) {
    auto ms = [](qint64 v) { return v < 0 ? QStringLiteral("-") : QString::number(v); };
    QStringList lines;
    lines << QStringLiteral("step timings (ms): settle / fill / answer / total");
    qint64 total = 0;
    int answered = 0;
    for (const StepTiming& t : timings) {
        lines << QStringLiteral("  %1 (%2): %3 / %4 / %5 / %6")
                     .arg(t.directionId, t.type, ms(t.settleMs), ms(t.fillMs), ms(t.answerMs))
                     .arg(t.totalMs());
        // Only steps that were left count for the mean: the last one is never answered.
        if (t.answerMs >= 0) {
            total += t.totalMs();
            ++answered;
        }
    }
    if (answered > 0)
        lines << QStringLiteral("  %1 steps left in %2 ms, %3 ms per step")
                     .arg(answered)
                     .arg(total)
                     .arg(total / answered);
    return lines;
}

} // namespace tessara::demo
