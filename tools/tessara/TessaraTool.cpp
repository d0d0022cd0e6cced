#include "TessaraTool.h"

#include "DocumentKind.h"
#include "EncodeCommand.h"
#include "ListenCommand.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QTimer>
#include <cstdio>

namespace tessara::tool {

namespace {

constexpr double kDefaultTimeoutSeconds = 70.0;

void writeOut(const QByteArray& bytes) {
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void writeErr(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}

std::optional<qint64> readInteger(const QString& text) {
    bool ok = false;
    const qint64 value = text.toLongLong(&ok);
    return ok ? std::optional<qint64>(value) : std::nullopt;
}

} // namespace

TessaraTool::TessaraTool(QStringList arguments)
    : arguments_(std::move(arguments)) {}

int TessaraTool::usageError(const QString& message) const {
    writeErr(QStringLiteral("tessara: ") + message + QLatin1Char('\n'));
    if (command_)
        writeErr(QStringLiteral("Try \"tessara %1 --help\".\n").arg(command_->name));
    else
        writeErr(QStringLiteral("Try \"tessara --help\".\n"));
    return 2;
}

int TessaraTool::run() {
    if (arguments_.size() < 2)
        return usageError(QStringLiteral("no command given."));
    const QString name = arguments_.at(1);
    if (name == QLatin1String("--help") || name == QLatin1String("-h") || name == QLatin1String("help")) {
        writeOut(CommandSpec::overview().toUtf8());
        return 0;
    }
    command_ = CommandSpec::find(name);
    if (!command_)
        return usageError(QStringLiteral("unknown command \"%1\".").arg(name));

    parser_.setApplicationDescription(command_->description);
    parser_.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    parser_.addOption(help);
    for (const QString& positional : command_->positionals)
        parser_.addPositionalArgument(positional, QString());
    parser_.addOptions(command_->options);
    if (command_->talksToBackend) {
        parser_.addOption(
            {QStringLiteral("backend"), QStringLiteral("Base URL of the backend."), QStringLiteral("URL")});
        parser_.addOption({QStringLiteral("timeout"), QStringLiteral("Give up after S seconds (default 70)."),
                           QStringLiteral("S")});
    }
    QStringList rest = arguments_.mid(2);
    rest.prepend(arguments_.first());
    if (!parser_.parse(rest))
        return usageError(parser_.errorText());
    if (parser_.isSet(help)) {
        QString text = parser_.helpText();
        // Qt names the program only; the command belongs in the usage line too.
        text.replace(QRegularExpression(QStringLiteral("^Usage: \\S+")),
                     QStringLiteral("Usage: tessara ") + command_->name);
        writeOut(text.toUtf8());
        return 0;
    }
    if (parser_.positionalArguments().size() != command_->positionals.size())
        return usageError(QStringLiteral("%1 expects %2.")
                              .arg(command_->name, command_->positionals.isEmpty()
                                                       ? QStringLiteral("no positional argument")
                                                       : command_->positionals.join(QLatin1Char(' '))));
    for (const QString& required : command_->requiredOptions) {
        if (!parser_.isSet(required))
            return usageError(QStringLiteral("--%1 is required.").arg(required));
    }

    const QStringList args = parser_.positionalArguments();
    auto& network = TSRNetwork::shared();
    if (name == QLatin1String("decode"))
        return runDecode();
    if (name == QLatin1String("listen"))
        return runListen();
    if (name == QLatin1String("encode"))
        return runEncode();
    if (name == QLatin1String("start")) {
        SubmissionCreateDTO dto{args[0], std::nullopt};
        if (parser_.isSet(QStringLiteral("token")))
            dto.callingServiceToken = parser_.value(QStringLiteral("token"));
        return runNetwork(
            [&](const Finish& finish) { network.createSubmission(dto, printer<SubmissionJSON>(finish)); });
    }
    if (name == QLatin1String("open"))
        return runNetwork(
            [&](const Finish& finish) { network.loadCurrentStep(args[0], printer<SubmissionJSON>(finish)); });
    if (name == QLatin1String("section"))
        return runNetwork([&](const Finish& finish) {
            network.loadSectionList(args[0], args[1], printer<std::vector<SubmissionJSON>>(finish));
        });
    if (name == QLatin1String("submit")) {
        SubmitStepDTO dto;
        dto.submissionId = parser_.value(QStringLiteral("submission"));
        dto.directionId = parser_.value(QStringLiteral("direction"));
        if (parser_.isSet(QStringLiteral("from")))
            dto.fromDirectionId = parser_.value(QStringLiteral("from"));
        if (parser_.isSet(QStringLiteral("flow-field")))
            dto.fromFlowFieldId = parser_.value(QStringLiteral("flow-field"));
        for (const QString& field : parser_.values(QStringLiteral("field"))) {
            const qsizetype equals = field.indexOf(QLatin1Char('='));
            if (equals <= 0)
                return usageError(QStringLiteral("--field wants KEY=VALUE, got \"%1\".").arg(field));
            dto.fields.push_back({field.left(equals), field.mid(equals + 1)});
        }
        return runNetwork(
            [&](const Finish& finish) { network.submitStep(dto, printer<SubmissionJSON>(finish)); });
    }
    if (name == QLatin1String("upload")) {
        QFile file(args[0]);
        if (!file.open(QIODevice::ReadOnly)) {
            writeErr(QStringLiteral("tessara: cannot read %1: %2\n").arg(args[0], file.errorString()));
            return 1;
        }
        const QFileInfo info(args[0]);
        TSRFile upload{file.readAll(), QMimeDatabase().mimeTypeForFile(info), info.fileName(),
                       !info.suffix().isEmpty()};
        const UploadFileDTO dto{parser_.value(QStringLiteral("submission")),
                                parser_.value(QStringLiteral("key")), parser_.value(QStringLiteral("from"))};
        return runNetwork([&](const Finish& finish) {
            network.uploadFile(upload, dto, [finish](TSRResult<void> result) {
                if (!result.isSuccess())
                    printError(result.error());
                finish(result.isSuccess() ? 0 : 1);
            });
        });
    }
    if (name == QLatin1String("products"))
        return runNetwork([&](const Finish& finish) {
            network.fetchCreditProducts(printer<std::vector<CreditProductJSON>>(finish));
        });
    if (name == QLatin1String("dates")) {
        const auto productId = readInteger(args[0]);
        if (!productId)
            return usageError(QStringLiteral("PRODUCT_ID must be an integer."));
        return runNetwork([&](const Finish& finish) {
            network.fetchInstalmentDates(*productId, printer<CreditInstalmentDatesJSON>(finish));
        });
    }
    if (name == QLatin1String("details")) {
        const auto productId = readInteger(parser_.value(QStringLiteral("product")));
        const auto periods = readInteger(parser_.value(QStringLiteral("periods")));
        const auto amount = Decimal::fromString(QStringView(parser_.value(QStringLiteral("amount"))));
        if (!productId || !periods || !amount)
            return usageError(
                QStringLiteral("--product and --periods must be integers, --amount a decimal number."));
        const InstalmentDetailsDTO dto{*productId, *amount, *periods};
        return runNetwork([&](const Finish& finish) {
            network.fetchInstalmentDetails(dto, printer<CreditInstalmentDetailsJSON>(finish));
        });
    }
    return runNetwork([&](const Finish& finish) {
        network.requestKYCStatus(args[0], args[1], printer<KYCStatusJSON>(finish));
    });
}

int TessaraTool::runDecode() {
    const QStringList args = parser_.positionalArguments();
    const QString& kind = args[0];
    if (!DocumentKind::exists(kind))
        return usageError(
            QStringLiteral("unknown KIND \"%1\"; one of: %2.").arg(kind, DocumentKind::names().join(", ")));
    QFile file;
    const bool opened = args[1] == QLatin1String("-")
                            ? file.open(stdin, QIODevice::ReadOnly)
                            : (file.setFileName(args[1]), file.open(QIODevice::ReadOnly));
    if (!opened) {
        writeErr(QStringLiteral("tessara: cannot read %1: %2\n").arg(args[1], file.errorString()));
        return 1;
    }
    const QByteArray bytes = file.readAll();
    if (auto encoded = DocumentKind::reencode(kind, bytes)) {
        writeOut(*encoded + '\n');
        return 0;
    }
    writeErr(TSRNetworkError::decodingFailure().errorDescription() + QLatin1Char('\n'));
    if (DocumentKind::stopsTheClient(kind, bytes))
        writeErr(QStringLiteral(
            "An element of \"availableDates\" is no yyyy-MM-dd date; the client stops the program "
            "on such an answer.\n"));
    return 1;
}

int TessaraTool::runListen() {
    const QUrl streamUrl(parser_.positionalArguments().at(0), QUrl::StrictMode);
    if (!streamUrl.isValid() || streamUrl.host().isEmpty())
        return usageError(QStringLiteral("STREAM_URL must be an absolute ws, wss, http or https URL."));
    std::optional<double> seconds;
    if (parser_.isSet(QStringLiteral("seconds"))) {
        bool ok = false;
        seconds = parser_.value(QStringLiteral("seconds")).toDouble(&ok);
        if (!ok || !(*seconds > 0))
            return usageError(QStringLiteral("--seconds wants a positive number of seconds."));
    }
    return ListenCommand(streamUrl, parser_.value(QStringLiteral("user-hash")), seconds).run();
}

int TessaraTool::runEncode() {
    EncodeCommand::Options options;
    options.output = parser_.positionalArguments().at(0);
    const QString camera = parser_.value(QStringLiteral("camera"));
    if (camera.startsWith(QLatin1String("file:")) && camera.size() > 5)
        options.filePath = camera.mid(5);
    else if (!camera.isEmpty() && camera != QLatin1String("synthetic"))
        return usageError(QStringLiteral("--camera is synthetic or file:PATH."));
    if (parser_.isSet(QStringLiteral("size"))) {
        const auto match = QRegularExpression(QStringLiteral("^(\\d+)x(\\d+)$"))
                               .match(parser_.value(QStringLiteral("size")));
        const int width = match.captured(1).toInt(), height = match.captured(2).toInt();
        if (!match.hasMatch() || width < 16 || height < 16 || width % 2 || height % 2)
            return usageError(
                QStringLiteral("--size wants WxH with even sides of at least 16, e.g. 1440x1920."));
        options.width = width;
        options.height = height;
    }
    const QString position = parser_.value(QStringLiteral("position"));
    if (position == QLatin1String("front"))
        options.position = CapturePosition::front;
    else if (!position.isEmpty() && position != QLatin1String("back"))
        return usageError(QStringLiteral("--position is back or front."));
    if (parser_.isSet(QStringLiteral("frames"))) {
        const auto frames = readInteger(parser_.value(QStringLiteral("frames")));
        if (!frames || *frames < 1)
            return usageError(QStringLiteral("--frames wants a positive whole number."));
        options.frames = *frames;
    }
    if (parser_.isSet(QStringLiteral("fps"))) {
        bool ok = false;
        options.fps = parser_.value(QStringLiteral("fps")).toDouble(&ok);
        if (!ok || !(options.fps >= 1 && options.fps <= 240))
            return usageError(QStringLiteral("--fps wants a rate from 1 to 240."));
    }
    options.realtime = parser_.isSet(QStringLiteral("realtime"));
    return EncodeCommand(options).run();
}

int TessaraTool::runNetwork(const std::function<void(const Finish&)>& call) {
    auto& network = TSRNetwork::shared();
    if (parser_.isSet(QStringLiteral("backend")))
        network.setInstanceURL(QUrl(parser_.value(QStringLiteral("backend")), QUrl::StrictMode));
    double timeout = kDefaultTimeoutSeconds;
    if (parser_.isSet(QStringLiteral("timeout"))) {
        bool ok = false;
        timeout = parser_.value(QStringLiteral("timeout")).toDouble(&ok);
        if (!ok || !(timeout > 0))
            return usageError(QStringLiteral("--timeout wants a positive number of seconds."));
    }
    // Shared with completions that may still be queued when the wait ends.
    struct State {
        QEventLoop loop;
        int status = -1;
    };
    auto state = std::make_shared<State>();
    const Finish finish = [weak = std::weak_ptr<State>(state)](int status) {
        auto live = weak.lock();
        if (!live || live->status >= 0)
            return;
        live->status = status;
        live->loop.exit(status);
    };
    QTimer::singleShot(static_cast<int>(timeout * 1000.0), &state->loop, [finish, timeout] {
        writeErr(QStringLiteral("tessara: no result after %1 s; giving up.\n").arg(timeout));
        finish(1);
    });
    call(finish);
    // invalidURL and encodingFailure arrive before the loop starts.
    if (state->status < 0)
        state->loop.exec();
    return state->status;
}

template <typename T> std::function<void(TSRResult<T>)> TessaraTool::printer(const Finish& finish) {
    return [finish](TSRResult<T> result) {
        if (!result.isSuccess()) {
            printError(result.error());
            return finish(1);
        }
        const auto encoded = encodeDocument<T>(result.value());
        if (!encoded) {
            writeErr(TSRNetworkError::encodingFailure().errorDescription() + QLatin1Char('\n'));
            return finish(1);
        }
        writeOut(*encoded + '\n');
        finish(0);
    };
}

void TessaraTool::printError(const TSRError& error) {
    writeErr(errorDescription(error) + QLatin1Char('\n'));
}

} // namespace tessara::tool
