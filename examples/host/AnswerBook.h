#pragma once

#include <QHash>
#include <QString>
#include <optional>

namespace tessara::demo {

// What the autopilot enters, by field key: text for inputs and areas, an option's `value` for
// choices, "true"/"false" for checkboxes and consents, "yyyy-MM-dd" for dates, a file path for
// uploads. Paths are read relative to the answers file.
class AnswerBook {
public:
    // No answers: every control gets the autopilot's default.
    AnswerBook() = default;

    // Reads a JSON object from `path`. Strings are taken as they are; booleans and numbers as
    // their JSON text. Anything else, or a file that is no JSON object, is an error.
    static std::optional<AnswerBook> load(const QString& path, QString* error);
    static std::optional<AnswerBook> fromJson(const QByteArray& json, const QString& baseDir, QString* error);

    std::optional<QString> answer(const QString& key) const;
    void setAnswer(const QString& key, const QString& value) { answers_.insert(key, value); }

    // `path` made absolute against the answers file's directory.
    QString resolvePath(const QString& path) const;

    // The file uploads take when the answers name none (the sample PDF); empty when unknown.
    QString defaultUploadFile() const { return defaultUploadFile_; }
    void setDefaultUploadFile(const QString& path) { defaultUploadFile_ = path; }

    QString baseDir() const { return baseDir_; }
    qsizetype size() const { return answers_.size(); }

private:
    QHash<QString, QString> answers_;
    QString baseDir_;
    QString defaultUploadFile_;
};

} // namespace tessara::demo
