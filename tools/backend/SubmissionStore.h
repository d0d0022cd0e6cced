#pragma once

#include "backend/SubmissionRecord.h"

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

namespace tessara {

// The submissions of this server's lifetime, in memory. Not thread-safe: it belongs to the thread
// of the server that owns it, like every other part of the server.
class SubmissionStore {
public:
    // The word a verification starts from: the service waits for the client's video.
    static constexpr const char* kInitialKycCode = "KYC_WAIT_FOR_VIDEO_STREAM";

    SubmissionStore();
    ~SubmissionStore();
    SubmissionStore(const SubmissionStore&) = delete;
    SubmissionStore& operator=(const SubmissionStore&) = delete;

    // A new submission with a fresh UUID and user hash, in the initial verification state.
    SubmissionRecord& create(const QString& processId, bool hasCallingServiceToken);

    SubmissionRecord* find(const QString& submissionId);
    const SubmissionRecord* find(const QString& submissionId) const;
    // The submission whose user hash this is, or null.
    SubmissionRecord* findByUserHash(const QString& userHash);

    // Notes that `directionId` was answered to the submission.
    void recordVisit(SubmissionRecord& submission, const QString& directionId);
    // The submission that most recently was answered the step `directionId`, or null.
    const SubmissionRecord* latestVisitorOf(const QString& directionId) const;

    // Sets the verification state; an empty message takes the standard text of the code.
    // False when no such submission exists.
    bool setKycStatus(const QString& submissionId, const QString& code, const QString& message = {});

    // All submissions, oldest first.
    std::vector<const SubmissionRecord*> all() const;

private:
    struct Entry {
        std::unique_ptr<SubmissionRecord> record;
        QHash<QString, quint64> lastVisit; // direction id -> visit sequence number
    };
    Entry* entry(const QString& submissionId);

    std::vector<Entry> entries_;
    QHash<QString, qsizetype> indexById_;
    quint64 visitSequence_ = 0;
};

} // namespace tessara
