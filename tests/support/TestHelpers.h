#pragma once

#include "tessara/documents/JsonCoding.h"
#include "tessara/documents/SubmissionJSON.h"

#include <QString>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>

// Readable failure messages for Qt strings.
inline void PrintTo(const QString& text, std::ostream* os) {
    *os << '"' << text.toStdString() << '"';
}

namespace tessara::test {

inline bool waitUntil(const std::function<bool()>& condition, int timeoutMs = 5000) {
    return QTest::qWaitFor(condition, timeoutMs);
}

// Lets queued calls, timers and deferred deletions run for a moment.
inline void settle(int ms = 50) {
    QTest::qWait(ms);
}

// A step document written in the test; one that does not decode fails the test.
inline SubmissionJSON decodeStep(const QByteArray& json) {
    auto document = decodeDocument<SubmissionJSON>(json);
    if (!document)
        ADD_FAILURE() << "test document does not decode: " << json.constData();
    return document.value_or(SubmissionJSON{});
}

} // namespace tessara::test
