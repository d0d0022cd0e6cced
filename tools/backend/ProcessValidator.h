#pragma once

#include "backend/ProcessDefinition.h"

#include <QStringList>

namespace tessara {

// Checks what a single document cannot tell: that a loaded process hangs together, and that
// nothing in it would stop the client (a control without a key, a rule without an operator, a
// flow to a step that does not exist). Each problem names the file it is in.
class ProcessValidator {
public:
    static QStringList check(const ProcessDefinition& process);
};

} // namespace tessara
