// Decoding cost of a large step document, against a bare parse of the same bytes into a general
// JSON tree. The full decode also checks every type and builds the records, so it should stay within
// twice the bare parse.

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

using namespace tessara;

namespace {

FieldJSON makeField(int i) {
    FieldJSON field;
    const QString n = QString::number(i);
    field.key = QStringLiteral("field_") + n;
    field.fieldId = 1000 + i;
    field.label = QStringLiteral("Поле номер ") + n;
    switch (i % 8) {
    case 0:
        field.type = FieldType::text;
        field.value = QStringLiteral("Моля, попълнете данните си внимателно. Line ") + n;
        field.styleClass = "subtitle";
        break;
    case 1:
        field.type = FieldType::inputField;
        field.validation = "^[0-9]{10}$";
        field.validationError = QStringLiteral("Невалидно ЕГН");
        field.isRequired = true;
        field.specialType = "UIC";
        field.variableType = "STRING";
        break;
    case 2:
        field.type = FieldType::dropdown;
        field.options = std::vector<FieldOption>{};
        for (int o = 0; o < 5; ++o)
            field.options->push_back(
                {o + 1, QStringLiteral("Опция ") + QString::number(o), QString::number(o), std::nullopt});
        field.isRequired = false;
        break;
    case 3:
        field.type = FieldType::radioButtons;
        field.options = std::vector<FieldOption>{{1, QStringLiteral("Да"), "yes", "Y"},
                                                 {2, QStringLiteral("Не"), "no", "N"}};
        field.condition = GroupControlConditionJSON{"field_" + QString::number(i - 2), std::nullopt, "1",
                                                    GroupControlOperatorType::equal, false};
        break;
    case 4:
        field.type = FieldType::checkbox;
        field.isRequired = true;
        field.isHidden = i % 16 == 4;
        field.condition = GroupControlConditionJSON{"field_1", "section_a", "yes",
                                                    GroupControlOperatorType::notEqual, true};
        break;
    case 5:
        field.type = FieldType::date;
        field.specialType = "DATE_OF_ISSUE";
        field.variableLabel = "dd.MM.yyyy";
        break;
    case 6:
        field.type = FieldType::uploadFile;
        field.allowedFileExtensions = std::vector<QString>{"pdf", "jpg", "png"};
        field.maximumFileSize = 10;
        field.fileSizeError = QStringLiteral("Файлът е твърде голям");
        field.fileExtensionError = QStringLiteral("Неподдържан формат");
        break;
    default: {
        field.type = i % 16 == 7 ? FieldType::consent : FieldType::flowButton;
        if (field.type == FieldType::consent) {
            FieldJSON line;
            line.type = FieldType::text;
            line.value = QStringLiteral("Съгласен съм с общите условия");
            FieldJSON link;
            link.type = FieldType::link;
            link.label = QStringLiteral("Общи условия");
            link.value = "https://example.com/terms.pdf";
            field.consentContent = std::vector<FieldJSON>{line, link};
        } else {
            field.flowDirectionId = "dir-" + n;
            field.flowDirectionType = "NEXT";
            field.flowFieldId = i;
            field.alignment = "CENTER";
        }
    }
    }
    return field;
}

const QByteArray& document() {
    static const QByteArray bytes = [] {
        SubmissionJSON submission;
        submission.type = "FORM";
        submission.name = QStringLiteral("Кандидатстване за кредит");
        submission.submissionId = "0f7d1c2e-5b7a-4c36-9d0e-3f5a8b1c2d3e";
        submission.directionId = "dir-start";
        submission.processId = "credit-process";
        for (int i = 0; i < 1000; ++i)
            submission.fields.push_back(makeField(i));
        return *encodeDocument(submission);
    }();
    return bytes;
}

void BM_DecodeSubmission(benchmark::State& state) {
    const QByteArray& bytes = document();
    for (auto _ : state) {
        auto decoded = decodeDocument<SubmissionJSON>(bytes);
        if (!decoded || decoded->fields.size() != 1000)
            state.SkipWithError("document did not decode");
        benchmark::DoNotOptimize(decoded);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}
BENCHMARK(BM_DecodeSubmission)->Unit(benchmark::kMicrosecond);

void BM_BareParse(benchmark::State& state) {
    const QByteArray& bytes = document();
    for (auto _ : state) {
        auto json = nlohmann::json::parse(bytes.constData(), bytes.constData() + bytes.size());
        benchmark::DoNotOptimize(json);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}
BENCHMARK(BM_BareParse)->Unit(benchmark::kMicrosecond);

void BM_EncodeSubmission(benchmark::State& state) {
    const auto submission = *decodeDocument<SubmissionJSON>(document());
    for (auto _ : state) {
        auto bytes = encodeDocument(submission);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * document().size());
}
BENCHMARK(BM_EncodeSubmission)->Unit(benchmark::kMicrosecond);

// Remembers the time per iteration of each run so the ratio can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration && run.iterations > 0)
                times_[run.benchmark_name()] = {run.GetAdjustedRealTime(), run.GetAdjustedCPUTime()};
        ConsoleReporter::ReportRuns(runs);
    }
    void printRatio() const {
        const auto decode = times_.find("BM_DecodeSubmission");
        const auto bare = times_.find("BM_BareParse");
        if (decode == times_.end() || bare == times_.end() || bare->second.first <= 0 ||
            bare->second.second <= 0)
            return;
        // CPU time is the steadier measure on a shared machine; both are shown.
        std::printf("document: %lld bytes, 1000 fields; full decode / bare parse = %.2f by CPU time, %.2f by "
                    "wall time (goal: at most 2.00)\n",
                    static_cast<long long>(document().size()), decode->second.second / bare->second.second,
                    decode->second.first / bare->second.first);
    }

private:
    std::map<std::string, std::pair<double, double>> times_; // real, CPU
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatio();
    benchmark::Shutdown();
    return 0;
}
