#pragma once

#include <QString>

namespace tessara {

// The text a control submits and validates: `text` without leading and trailing
// whitespace, newlines and control characters (any mix of them).
QString trimmedForSubmission(const QString& text);

} // namespace tessara
