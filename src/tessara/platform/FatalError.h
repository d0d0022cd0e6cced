#pragma once

#include <QString>

namespace tessara {

// Ends the program for a document or a call that breaks a mandatory assumption:
// logs the message, writes it to standard error and aborts. Never returns.
[[noreturn]] void fatalError(const QString& message);

} // namespace tessara
