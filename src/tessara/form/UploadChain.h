#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <functional>
#include <vector>

namespace tessara {

class TSRUploadFileView;

// Sends the files of upload fields one by one, in order, before a step goes out. The first
// failure ends the chain; files already sent stay sent. A new chain always starts again
// from the first field.
class UploadChain {
public:
    using Finished = std::function<void(bool allUploaded)>;

    UploadChain() = delete;

    // Runs the chain; `finished` runs once, on the main thread (at once when nothing is to
    // upload or a request cannot be made). Nothing runs once `context` is gone. A field
    // without a chosen file is fatal when its turn comes.
    static void run(std::vector<QPointer<TSRUploadFileView>> uploads, const QString& submissionId,
                    const QString& fromDirectionId, const QObject* context, Finished finished);
};

} // namespace tessara
