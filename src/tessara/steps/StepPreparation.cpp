#include "tessara/steps/StepPreparation.h"

#include "tessara/backend/TSRNetwork.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/MainThread.h"

#include <memory>

namespace tessara {

namespace {

using Continuation = std::function<void(TSRResult<SubmissionJSON>)>;

void deliverLater(TSRResult<SubmissionJSON> result, Continuation continuation) {
    runOnMain([result = std::move(result), continuation = std::move(continuation)] { continuation(result); });
}

// The document under expansion, shared by all its section loads. Every load answers on the
// main thread, so a plain counter of outstanding loads tells when the last one is in.
struct SectionExpansion {
    SubmissionJSON document;
    std::optional<TSRError> error;
    int outstanding = 0;
    Continuation continuation;

    void finishOne() {
        if (--outstanding > 0)
            return;
        if (error)
            continuation(*error);
        else
            continuation(std::move(document));
    }
};

void expandSections(SubmissionJSON document, TSRNetwork& network, Continuation continuation) {
    std::vector<size_t> sections;
    for (size_t i = 0; i < document.fields.size(); ++i) {
        if (document.fields[i].type == FieldType::section)
            sections.push_back(i);
    }
    if (sections.empty())
        return deliverLater(std::move(document), std::move(continuation));

    if (!document.submissionId)
        fatalError(QStringLiteral("A step with a SECTION field has no submissionId."));
    for (size_t index : sections) {
        if (!document.fields[index].key)
            fatalError(QStringLiteral("A SECTION field has no key."));
    }

    auto expansion = std::make_shared<SectionExpansion>();
    expansion->document = std::move(document);
    expansion->continuation = std::move(continuation);
    // Counted in full before the first load, so no answer can finish the expansion early.
    expansion->outstanding = static_cast<int>(sections.size());
    const QString submissionId = *expansion->document.submissionId;
    for (size_t index : sections) {
        const QString key = *expansion->document.fields[index].key;
        network.loadSection(
            submissionId, key, [expansion, index, &network](TSRResult<SubmissionJSON> loaded) {
                prepareStep(
                    std::move(loaded), network, [expansion, index](TSRResult<SubmissionJSON> section) {
                        if (section.isSuccess())
                            expansion->document.fields[index].fields = std::move(section.value().fields);
                        else
                            expansion->error = section.error();
                        expansion->finishOne();
                    });
            });
    }
}

} // namespace

void prepareStep(TSRResult<SubmissionJSON> result, TSRNetwork& network, Continuation continuation) {
    if (!result.isSuccess())
        return deliverLater(std::move(result), std::move(continuation));

    const std::optional<QString>& type = result.value().type;
    if (!type || *type == QLatin1String("DOC_DATA") || *type == QLatin1String("SELFIE"))
        return deliverLater(std::move(result), std::move(continuation));

    // The credit products of a calculator step are loaded here once the calculator lands;
    // until then its document passes through as it came.
    if (*type == QLatin1String("CREDIT_CALCULATOR"))
        return deliverLater(std::move(result), std::move(continuation));

    expandSections(std::move(result).value(), network, std::move(continuation));
}

} // namespace tessara
