#include "tessara/form/UploadChain.h"

#include "tessara/backend/TSRNetwork.h"
#include "tessara/form/controls/TSRUploadFileView.h"
#include "tessara/platform/FatalError.h"
#include "tessara/platform/Logging.h"

#include <memory>

namespace tessara {

namespace {

struct ChainState {
    std::vector<QPointer<TSRUploadFileView>> uploads;
    QString submissionId;
    QString fromDirectionId;
    QPointer<const QObject> context;
    UploadChain::Finished finished;
};

void uploadAt(std::shared_ptr<ChainState> state, std::size_t index) {
    if (!state->context)
        return;
    if (index == state->uploads.size()) {
        state->finished(true);
        return;
    }
    TSRUploadFileView* view = state->uploads[index];
    if (!view || !view->fileToUpload)
        fatalError(QStringLiteral("An upload field has no file to send%1.")
                       .arg(view ? QStringLiteral(": ") + view->key() : QString()));

    const UploadFileDTO dto{state->submissionId, view->key(), state->fromDirectionId};
    TSRNetwork::shared().uploadFile(*view->fileToUpload, dto, [state, index](TSRResult<void> result) {
        if (!state->context)
            return;
        if (!result.isSuccess()) {
            qCCritical(lcTessara).noquote() << "File upload failed:" << errorDescription(result.error());
            state->finished(false);
            return;
        }
        uploadAt(state, index + 1);
    });
}

} // namespace

void UploadChain::run(std::vector<QPointer<TSRUploadFileView>> uploads, const QString& submissionId,
                      const QString& fromDirectionId, const QObject* context, Finished finished) {
    auto state = std::make_shared<ChainState>(
        ChainState{std::move(uploads), submissionId, fromDirectionId, context, std::move(finished)});
    uploadAt(std::move(state), 0);
}

} // namespace tessara
