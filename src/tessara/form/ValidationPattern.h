#pragma once

#include <QRegularExpression>
#include <QString>
#include <optional>

namespace tessara {

// A field's `validation` pattern, read with the Unicode-aware semantics backends write them for
// (`\w`, `\d`, `\s`, `\b`, POSIX classes and case folding cover all scripts; `\uXXXX` escapes).
// Plain value class without threads of its own; usable from any thread.
class ValidationPattern {
public:
    explicit ValidationPattern(const QString& pattern);

    // False when the pattern does not compile or uses a construct outside the backends' syntax.
    bool isValid() const { return expression_.has_value(); }

    // True when the pattern matches somewhere in `text`; false for an invalid pattern.
    bool isFoundIn(const QString& text) const;

private:
    // The pattern rewritten into what Qt's engine reads, or nothing when it must stay invalid.
    static std::optional<QString> translated(const QString& pattern);

    std::optional<QRegularExpression> expression_;
};

} // namespace tessara
