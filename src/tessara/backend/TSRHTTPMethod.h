#pragma once

#include <QByteArray>

namespace tessara {

// HTTP verbs, in the order the client knows them. `delete` is a C++ keyword, hence the
// trailing underscore on that one case.
enum class TSRHTTPMethod { get, put, post, delete_, head, options, trace, connect };

// The verb as it goes on the request line ("GET", "POST", ...).
QByteArray verbString(TSRHTTPMethod method);

} // namespace tessara
