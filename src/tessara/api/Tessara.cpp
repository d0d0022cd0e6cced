#include "tessara/api/Tessara.h"

#include "tessara/api/TSRNavigationViewController.h"
#include "tessara/api/TSRRootController.h"
#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/backend/TSRNetwork.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/HostHooks.h"
#include "tessara/platform/Logging.h"
#include "tessara/steps/StepPreparation.h"

#include <QWidget>

namespace tessara {

namespace {

Tessara::Completion fromObjc(Tessara::ObjcCompletion completion) {
    return [completion = std::move(completion)](TSRResult<bool> result) {
        if (result.isSuccess())
            completion(result.value(), std::nullopt);
        else
            completion(false, result.error());
    };
}

// A host without optionals passes a null QString for "no token".
std::optional<QString> tokenFromObjc(std::optional<QString> token) {
    if (token && token->isNull())
        return std::nullopt;
    return token;
}

} // namespace

Tessara::Tessara(std::optional<QUrl> tessaraInstanceURL, std::shared_ptr<TSRAppearance> appearance,
                 QObject* parent)
    : QObject(parent) {
    TSRNetwork::shared().setInstanceURL(std::move(tessaraInstanceURL));
    setCurrentAppearance(std::move(appearance));
}

Tessara::~Tessara() = default;

std::shared_ptr<TSRAppearance> Tessara::appearance() {
    return sharedAppearance();
}

void Tessara::setAppearance(std::shared_ptr<TSRAppearance> appearance) {
    setCurrentAppearance(std::move(appearance));
}

void Tessara::setCamera(const QString& choice) {
    HostHooks::instance().camera = choice;
}

TSRDelegate* Tessara::delegate() const {
    return delegateWidget_ ? delegate_ : nullptr;
}

TSRRootController* Tessara::rootController() const {
    return rootController_;
}

void Tessara::dismissRoot() {
    if (rootController_)
        rootController_->dismiss();
}

void Tessara::startProcess(const QString& processId, std::optional<QString> callingServiceToken,
                           TSRDelegate* delegate, Completion didStartProcess) {
    qCInfo(lcTessara, "Starting process with id %s…", qUtf8Printable(processId));
    SubmissionCreateDTO body{processId, std::move(callingServiceToken)};
    run(delegate, std::move(didStartProcess), [body](TSRNetwork::Completion<SubmissionJSON> completion) {
        TSRNetwork::shared().createSubmission(body, std::move(completion));
    });
}

void Tessara::openStep(const QString& directionId, TSRDelegate* delegate, Completion didOpenStep) {
    qCInfo(lcTessara, "Opening step with id %s…", qUtf8Printable(directionId));
    run(delegate, std::move(didOpenStep), [directionId](TSRNetwork::Completion<SubmissionJSON> completion) {
        TSRNetwork::shared().loadCurrentStep(directionId, std::move(completion));
    });
}

void Tessara::objc_startProcess(const QString& processId, std::optional<QString> callingServiceToken,
                                TSRDelegate* delegate, ObjcCompletion didStartProcess) {
    startProcess(processId, tokenFromObjc(std::move(callingServiceToken)), delegate,
                 fromObjc(std::move(didStartProcess)));
}

void Tessara::objc_openStep(const QString& directionId, TSRDelegate* delegate, ObjcCompletion didOpenStep) {
    openStep(directionId, delegate, fromObjc(std::move(didOpenStep)));
}

template <typename Request> void Tessara::run(TSRDelegate* delegate, Completion completion, Request request) {
    auto root = std::make_unique<TSRRootController>();
    delegate_ = delegate;
    rootController_ = root.get();

    auto* host = dynamic_cast<QWidget*>(delegate);
    if (!host)
        fatalError(
            QStringLiteral("The delegate given to Tessara is not a QWidget. The SDK shows its screens over "
                           "the delegate's widget, so the delegate must be one."));
    delegateWidget_ = host;
    TSRRootController* presented = root.release(); // owned by the host widget from the next line on
    presented->presentOver(host);

    // The root is a child of the host's widget; if the host removed it meanwhile, the step
    // has nowhere to go, and the call still reports how the request went.
    QPointer<TSRRootController> weakRoot(presented);
    auto deliver = [weakRoot, delegate,
                    completion = std::move(completion)](TSRResult<SubmissionJSON> result) {
        if (!result.isSuccess())
            return completion(result.error());
        if (weakRoot) {
            weakRoot->setFormDelegate(delegate);
            std::unique_ptr<TSRViewController> screen = weakRoot->makeStepController(result.value());
            weakRoot->presentStep(std::make_unique<TSRNavigationViewController>(std::move(screen)));
        }
        completion(true);
    };
    request([deliver = std::move(deliver)](TSRResult<SubmissionJSON> result) {
        prepareStep(std::move(result), TSRNetwork::shared(), deliver);
    });
}

} // namespace tessara
