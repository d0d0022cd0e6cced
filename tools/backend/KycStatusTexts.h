#pragma once

#include <QString>

namespace tessara {

// Standard Bulgarian messages for the verification status words.
class KycStatusTexts {
public:
    // The message for `code`, or a generic one for a word without its own text.
    static QString messageFor(const QString& code);
};

} // namespace tessara
