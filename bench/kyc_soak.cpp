// A long verification session: the reference backend runs in its own process with the
// "hold-document" script, so the document phase never ends, and this process, which holds
// nothing but the SDK, samples its own resident memory each second. It prints the growth after
// the first minute (the goal: at most 5 MB over ten minutes) and how long the first picture took.
//
//   kyc_soak [--minutes N] [--backend PATH]

#include "tessara/api/TSRDelegate.h"
#include "tessara/api/Tessara.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

// The SDK's screens are laid over this widget, as over a phone's window.
class SoakHost : public QWidget, public tessara::TSRDelegate {
public:
    void closedFormOnStepWithId(const QString& directionId) override {
        std::fprintf(stderr, "the step %s was closed before the end\n", qPrintable(directionId));
        QApplication::exit(1);
    }
};

qint64 residentBytes() {
    std::FILE* statm = std::fopen("/proc/self/statm", "r");
    long pages = 0;
    long resident = 0;
    if (statm) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2)
            resident = 0;
        std::fclose(statm);
    }
    return qint64(resident) * sysconf(_SC_PAGESIZE);
}

double megabytes(qint64 bytes) {
    return double(bytes) / (1024.0 * 1024.0);
}

// The sample process, started straight at its verification step, the service holding the
// document phase for as long as the session lasts.
bool writeSoakProcess(const QString& into) {
    const QDir sample(QStringLiteral(TESSARA_SAMPLE_PROCESS_DIR));
    const QDir target(into);
    QDirIterator files(sample.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString relative = sample.relativeFilePath(files.next());
        target.mkpath(QFileInfo(relative).path());
        QFile::copy(sample.filePath(relative), target.filePath(relative));
    }
    QFile in(sample.filePath(QStringLiteral("process.json")));
    if (!in.open(QIODevice::ReadOnly))
        return false;
    QJsonObject process = QJsonDocument::fromJson(in.readAll()).object();
    process.insert(QStringLiteral("firstStep"), QStringLiteral("kyc-verification"));
    process.insert(QStringLiteral("verificationScript"), QStringLiteral("hold-document"));
    QFile::remove(target.filePath(QStringLiteral("process.json")));
    QFile out(target.filePath(QStringLiteral("process.json")));
    return out.open(QIODevice::WriteOnly) && out.write(QJsonDocument(process).toJson()) > 0;
}

QWidget* verificationScreen(QWidget* host) {
    for (QWidget* screen : host->findChildren<QWidget*>(QStringLiteral("TSRNativeKYCController"))) {
        if (screen->isVisible())
            return screen;
    }
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A long verification session; prints resident memory growth."));
    parser.addHelpOption();
    const QCommandLineOption minutesOption(QStringLiteral("minutes"),
                                           QStringLiteral("Length of the session (default 10)."),
                                           QStringLiteral("N"), QStringLiteral("10"));
    const QCommandLineOption backendOption(QStringLiteral("backend"),
                                           QStringLiteral("The reference backend's executable."),
                                           QStringLiteral("PATH"), QStringLiteral(TESSARA_BACKEND_BINARY));
    parser.addOptions({minutesOption, backendOption});
    parser.process(app);
    bool ok = false;
    const double minutes = parser.value(minutesOption).toDouble(&ok);
    if (!ok || minutes <= 0) {
        std::fprintf(stderr, "kyc_soak: --minutes needs a positive number\n");
        return 2;
    }

    QTemporaryDir processes;
    if (!processes.isValid() || !writeSoakProcess(processes.path())) {
        std::fprintf(stderr, "kyc_soak: cannot prepare the process definitions\n");
        return 1;
    }
    QProcess backend;
    backend.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    backend.start(parser.value(backendOption),
                  {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--quiet"),
                   QStringLiteral("--processes"), processes.path()});
    if (!backend.waitForReadyRead(10000)) {
        std::fprintf(stderr, "kyc_soak: the backend %s did not start\n",
                     qPrintable(parser.value(backendOption)));
        return 1;
    }
    const QString banner = QString::fromUtf8(backend.readLine()).trimmed();
    const QUrl backendUrl(banner.section(QLatin1Char(' '), -1));
    std::printf("%s\n", qPrintable(banner));

    tessara::Tessara sdk(backendUrl, nullptr);
    tessara::Tessara::setCamera(QStringLiteral("synthetic"));
    SoakHost host;
    host.resize(390, 844);
    host.show();

    QElapsedTimer clock;
    clock.start();
    qint64 shownMs = -1;
    qint64 firstPictureMs = -1;
    int pictures = 0;
    QString submissionId;
    QNetworkAccessManager network;
    bool asking = false;
    // The simulator's own count shows the session stayed live to the end.
    auto askReport = [&] {
        if (asking || submissionId.isEmpty())
            return;
        asking = true;
        QUrl url = backendUrl;
        url.setPath(QStringLiteral("/_demo/submissions/") + submissionId);
        QNetworkReply* reply = network.get(QNetworkRequest(url));
        QObject::connect(reply, &QNetworkReply::finished, &app, [&, reply] {
            reply->deleteLater();
            asking = false;
            const QJsonObject seen = QJsonDocument::fromJson(reply->readAll())
                                         .object()
                                         .value(QLatin1String("verification"))
                                         .toObject();
            pictures = seen.value(QLatin1String("pictures")).toInt();
            if (pictures > 0 && firstPictureMs < 0) {
                firstPictureMs = clock.elapsed();
                std::printf("first picture decoded %lld ms after the step was on screen (%lld ms after the "
                            "join, by the service's clock)\n",
                            firstPictureMs - shownMs,
                            qint64(seen.value(QLatin1String("firstPictureMs")).toDouble()));
            }
        });
    };

    QTimer watchScreen;
    watchScreen.setInterval(10);
    QObject::connect(&watchScreen, &QTimer::timeout, &app, [&] {
        if (shownMs < 0) {
            if (QWidget* screen = verificationScreen(&host)) {
                shownMs = clock.elapsed();
                submissionId = screen->property("submissionId").toString();
            }
        } else if (firstPictureMs < 0) {
            askReport();
        } else {
            watchScreen.stop();
        }
    });
    watchScreen.start();

    std::vector<qint64> samples; // one per second
    const int seconds = std::max(2, int(minutes * 60));
    QTimer sampler;
    sampler.setInterval(1000);
    QObject::connect(&sampler, &QTimer::timeout, &app, [&] {
        samples.push_back(residentBytes());
        const int second = int(samples.size());
        // Asked a second early, so the minute's line has a fresh count.
        if (second % 60 == 59)
            askReport();
        if (second % 60 == 0) {
            std::printf("%3d min: resident %.1f MB, %d pictures decoded by the service\n", second / 60,
                        megabytes(samples.back()), pictures);
            std::fflush(stdout);
        }
        if (second >= seconds)
            QApplication::exit(0);
    });
    sampler.start();

    sdk.startProcess(QStringLiteral("credit-request"), std::nullopt, &host,
                     [](tessara::TSRResult<bool> result) {
                         if (!result.isSuccess()) {
                             std::fprintf(stderr, "kyc_soak: the process did not start: %s\n",
                                          qPrintable(tessara::errorDescription(result.error())));
                             QApplication::exit(1);
                         }
                     });
    const int code = QApplication::exec();
    if (code == 0) {
        askReport();
        QDeadlineTimer deadline(5000);
        while (asking && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        std::printf("the service decoded %d pictures in all\n", pictures);
    }
    backend.terminate();
    backend.waitForFinished(3000);
    if (code != 0)
        return code;
    if (shownMs < 0 || firstPictureMs < 0) {
        std::fprintf(stderr, "kyc_soak: %s\n",
                     shownMs < 0 ? "the verification step never showed" : "the service decoded no picture");
        return 1;
    }
    // The first minute holds the one-off costs: the screen, the encoder, the caches.
    const size_t base = std::min<size_t>(60, samples.size()) - 1;
    const qint64 peak = *std::max_element(samples.begin() + qsizetype(base), samples.end());
    std::printf("resident memory: %.1f MB after the first minute, %.1f MB at the end, peak %.1f MB\n",
                megabytes(samples[base]), megabytes(samples.back()), megabytes(peak));
    std::printf("growth after the first minute: %.2f MB (peak %.2f MB; goal at most 5 MB)\n",
                megabytes(samples.back() - samples[base]), megabytes(peak - samples[base]));
    return 0;
}
