// Form screen timings: building a step of 200 and 1,000 fields, and the time from the
// backend's answer to POST "/step" until the next step is on screen and laid out.

#include "BenchMain.h"
#include "support/LoopbackHttpServer.h"
#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/documents/JsonCoding.h"
#include "tessara/form/TSRControl.h"
#include "tessara/form/TSRFormController.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLayout>
#include <QTest>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>

using namespace tessara;

namespace {

FieldJSON makeField(FieldType type, const QString& key, const QString& label) {
    FieldJSON field;
    field.type = type;
    field.key = key;
    field.label = label;
    return field;
}

std::vector<FieldOption> options(int count) {
    std::vector<FieldOption> list;
    for (int i = 0; i < count; ++i)
        list.push_back(
            {i + 1, QStringLiteral("Възможност %1").arg(i + 1), QStringLiteral("V%1").arg(i + 1), {}});
    return list;
}

// A mix like the backend's long steps: mostly inputs and their captions, some choices,
// dates, toggles and separators, one upload in fifty, a flow button at the end.
SubmissionJSON realisticStep(int fieldCount, const QString& directionId) {
    SubmissionJSON step;
    step.type = QStringLiteral("FORM");
    step.submissionId = QStringLiteral("bench-submission");
    step.directionId = directionId;
    for (int i = 0; i < fieldCount - 1; ++i) {
        const QString key = QStringLiteral("f%1").arg(i);
        FieldJSON field;
        switch (i % 10) {
        case 0:
            field = makeField(FieldType::text, key, {});
            field.value = QStringLiteral("Раздел %1: данни за кандидата и неговите доходи").arg(i / 10 + 1);
            break;
        case 1:
        case 2:
        case 3:
            field = makeField(FieldType::inputField, key, QStringLiteral("Поле %1").arg(i));
            field.validation = QStringLiteral("^.{2,}$");
            break;
        case 4:
            field = makeField(FieldType::dropdown, key, QStringLiteral("Избор %1").arg(i));
            field.options = options(5);
            break;
        case 5:
            field = makeField(FieldType::radioButtons, key, QStringLiteral("Вариант %1").arg(i));
            field.options = options(3);
            break;
        case 6:
            field = makeField(FieldType::date, key, QStringLiteral("Дата %1").arg(i));
            field.value = QStringLiteral("2000-01-01");
            break;
        case 7:
            field = makeField(i % 50 == 7 ? FieldType::uploadFile : FieldType::checkbox, key,
                              QStringLiteral("Отметка %1").arg(i));
            field.allowedFileExtensions = std::vector<QString>{QStringLiteral("pdf"), QStringLiteral("jpg")};
            field.maximumFileSize = 5;
            break;
        case 8:
            field = makeField(i % 20 == 8 ? FieldType::inputArea : FieldType::hint, key,
                              QStringLiteral("Бележка"));
            field.value = QStringLiteral("Попълнете данните точно както са в документа Ви за самоличност.");
            break;
        default:
            field = makeField(FieldType::horizontalLine, key, {});
            break;
        }
        step.fields.push_back(std::move(field));
    }
    FieldJSON flow = makeField(FieldType::flowButton, QStringLiteral("continue"), QStringLiteral("Продължи"));
    flow.directionId = QStringLiteral("next");
    flow.styleClass = QStringLiteral("position-bottom");
    step.fields.push_back(std::move(flow));
    return step;
}

// Build: the screen made from its document, shown at phone size and laid out once.
void BM_BuildFormScreen(benchmark::State& state) {
    const SubmissionJSON step = realisticStep(int(state.range(0)), QStringLiteral("bench"));
    for (auto _ : state) {
        auto form = std::make_unique<TSRFormController>();
        form->ui = step;
        form->resize(390, 800);
        form->loadViewIfNeeded();
        form->stackView()->layout()->activate();
        benchmark::DoNotOptimize(form->formFields().size());
        state.PauseTiming();
        form.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.counters["fields"] = double(step.fields.size());
}
BENCHMARK(BM_BuildFormScreen)->Arg(200)->Arg(1000)->Unit(benchmark::kMillisecond);

// Answer to screen: the loopback backend answers POST "/step" with a step of N fields; the
// clock starts as the answer is written and stops once the new screen is visible with its
// last control placed.
void BM_StepAnswerToNextScreen(benchmark::State& state) {
    const int fieldCount = int(state.range(0));
    const QByteArray answer = *encodeDocument(realisticStep(fieldCount, QStringLiteral("next")));
    test::LoopbackHttpServer server;
    TSRNetwork::shared().setInstanceURL(server.url());
    std::chrono::steady_clock::time_point answered;
    server.setHandler([&](const test::RecordedRequest&) {
        answered = std::chrono::steady_clock::now();
        return test::CannedResponse::json(200, answer);
    });

    SubmissionJSON first;
    first.type = QStringLiteral("FORM");
    first.submissionId = QStringLiteral("bench-submission");
    first.directionId = QStringLiteral("start");
    FieldJSON flow = makeField(FieldType::flowButton, QStringLiteral("go"), QStringLiteral("Напред"));
    flow.directionId = QStringLiteral("next");
    first.fields.push_back(flow);

    for (auto _ : state) {
        auto screen = std::make_unique<TSRFormController>();
        screen->ui = first;
        auto navigation = std::make_unique<TSRNavigationViewController>(std::move(screen));
        navigation->resize(390, 844);
        navigation->show();
        QCoreApplication::processEvents();
        auto* button = navigation->findChild<QAbstractButton*>(QStringLiteral("TSRFlowButton.go"));
        button->click();

        auto shown = [&] {
            auto* next = qobject_cast<TSRFormController*>(navigation->visibleViewController());
            if (!next || next->ui->directionId != QStringLiteral("next") || !next->isVisible())
                return false;
            QWidget* last = next->formFields().empty() ? nullptr : next->formFields().back()->widget();
            return last && last->isVisible() && !last->geometry().isEmpty() &&
                   !next->stackView()->layout()->geometry().isEmpty();
        };
        QElapsedTimer guard;
        guard.start();
        while (!shown() && guard.elapsed() < 10000)
            QCoreApplication::processEvents(QEventLoop::AllEvents);
        const auto done = std::chrono::steady_clock::now();
        if (!shown()) {
            state.SkipWithError("the next screen did not appear");
            break;
        }
        state.SetIterationTime(std::chrono::duration<double>(done - answered).count());
        navigation.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
BENCHMARK(BM_StepAnswerToNextScreen)->Arg(200)->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    return tessara::bench::runBenchmarks(argc, argv);
}
