#include "backend/SubmissionStore.h"

#include "backend/KycStatusTexts.h"

#include <QRandomGenerator>
#include <QUuid>

namespace tessara {

namespace {

// 128 random bits as hex: unguessable, and free of characters that need escaping in a URL path.
QString newUserHash() {
    quint32 words[4];
    QRandomGenerator::system()->fillRange(words);
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(words), sizeof words).toHex());
}

} // namespace

SubmissionStore::SubmissionStore() = default;
SubmissionStore::~SubmissionStore() = default;

SubmissionRecord& SubmissionStore::create(const QString& processId, bool hasCallingServiceToken) {
    auto record = std::make_unique<SubmissionRecord>();
    record->submissionId = QUuid::createUuid().toString(QUuid::WithoutBraces);
    record->processId = processId;
    record->userHash = newUserHash();
    record->hasCallingServiceToken = hasCallingServiceToken;
    record->createdAt = QDateTime::currentDateTimeUtc();
    record->kycCode = QString::fromLatin1(kInitialKycCode);
    record->kycMessage = KycStatusTexts::messageFor(record->kycCode);
    SubmissionRecord& result = *record;
    indexById_.insert(result.submissionId, qsizetype(entries_.size()));
    entries_.push_back(Entry{std::move(record), {}});
    return result;
}

SubmissionStore::Entry* SubmissionStore::entry(const QString& submissionId) {
    const auto it = indexById_.constFind(submissionId);
    return it == indexById_.cend() ? nullptr : &entries_[size_t(*it)];
}

SubmissionRecord* SubmissionStore::find(const QString& submissionId) {
    Entry* found = entry(submissionId);
    return found ? found->record.get() : nullptr;
}

const SubmissionRecord* SubmissionStore::find(const QString& submissionId) const {
    return const_cast<SubmissionStore*>(this)->find(submissionId);
}

SubmissionRecord* SubmissionStore::findByUserHash(const QString& userHash) {
    for (Entry& candidate : entries_) {
        if (candidate.record->userHash == userHash)
            return candidate.record.get();
    }
    return nullptr;
}

void SubmissionStore::recordVisit(SubmissionRecord& submission, const QString& directionId) {
    submission.visitedSteps.push_back(directionId);
    if (Entry* found = entry(submission.submissionId))
        found->lastVisit.insert(directionId, ++visitSequence_);
}

const SubmissionRecord* SubmissionStore::latestVisitorOf(const QString& directionId) const {
    const SubmissionRecord* latest = nullptr;
    quint64 latestSequence = 0;
    for (const Entry& candidate : entries_) {
        const quint64 sequence = candidate.lastVisit.value(directionId, 0);
        if (sequence > latestSequence) {
            latestSequence = sequence;
            latest = candidate.record.get();
        }
    }
    return latest;
}

bool SubmissionStore::setKycStatus(const QString& submissionId, const QString& code, const QString& message) {
    SubmissionRecord* submission = find(submissionId);
    if (!submission)
        return false;
    submission->kycCode = code;
    submission->kycMessage = message.isEmpty() ? KycStatusTexts::messageFor(code) : message;
    return true;
}

std::vector<const SubmissionRecord*> SubmissionStore::all() const {
    std::vector<const SubmissionRecord*> result;
    result.reserve(entries_.size());
    for (const Entry& candidate : entries_)
        result.push_back(candidate.record.get());
    return result;
}

} // namespace tessara
