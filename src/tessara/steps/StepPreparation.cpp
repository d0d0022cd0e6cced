#include "tessara/steps/StepPreparation.h"

#include "tessara/backend/TSRNetwork.h"
#include "tessara/credit/CreditRules.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/MainThread.h"

#include <QThreadPool>
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

// The products of a calculator step, fetched from a worker thread so the main thread never
// waits for the list; the answer is filtered and checked, and always handed over queued on the
// main thread (a request that cannot be made answers on the calling thread).
void loadCreditProducts(SubmissionJSON document, TSRNetwork& network, Continuation continuation) {
    auto box = std::make_shared<SubmissionJSON>(std::move(document));
    QThreadPool::globalInstance()->start([box, &network, continuation = std::move(continuation)] {
        network.fetchCreditProducts([box, continuation](TSRResult<std::vector<CreditProductJSON>> answer) {
            runOnMain([box, continuation, answer = std::move(answer)] {
                if (!answer.isSuccess())
                    return continuation(answer.error());
                box->creditProducts = CreditRules::keptProducts(answer.value(), box->settings);
                if (!CreditRules::computeMinMaxPrincipals(*box->creditProducts).min)
                    return continuation(TSRNetworkError::custom(CreditRules::productsNotSetText()));
                continuation(std::move(*box));
            });
        });
    });
}

} // namespace

void prepareStep(TSRResult<SubmissionJSON> result, TSRNetwork& network, Continuation continuation) {
    if (!result.isSuccess())
        return deliverLater(std::move(result), std::move(continuation));

    const std::optional<QString>& type = result.value().type;
    if (!type || *type == QLatin1String("DOC_DATA") || *type == QLatin1String("SELFIE"))
        return deliverLater(std::move(result), std::move(continuation));

    if (*type == QLatin1String("CREDIT_CALCULATOR"))
        return loadCreditProducts(std::move(result).value(), network, std::move(continuation));

    expandSections(std::move(result).value(), network, std::move(continuation));
}

} // namespace tessara
