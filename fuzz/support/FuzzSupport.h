#pragma once

// What every harness shares: the exception that stands in for the product's fatal error, the
// count of inputs that ended there, and the check that turns a broken property into a finding.

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace tessara::fuzz {

// Thrown by the fuzz build's fatalError(): the program would have ended on purpose here.
struct FatalEnd {
    QString message;
};

// Inputs that reached a deliberate fatal error; printed when the fuzzer exits.
void countFatalEnd();

// Runs `body`; a deliberate fatal error is a rejected input, not a finding.
template <typename Body> void runGuarded(Body&& body) {
    try {
        body();
    } catch (const FatalEnd&) {
        countFatalEnd();
    }
}

// A property that decoding must keep; a broken one aborts, so libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "==FUZZ CHECK FAILED== %s (%s:%d)\n", what, file, line);
    std::abort();
}

inline QByteArrayView bytesOf(const uint8_t* data, size_t size) {
    return QByteArrayView(reinterpret_cast<const char*>(data), qsizetype(size));
}

} // namespace tessara::fuzz

#define FUZZ_CHECK(condition)                                                                                \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            ::tessara::fuzz::fail(#condition, __FILE__, __LINE__);                                           \
    } while (false)

#include "tessara/documents/JsonCoding.h"

namespace tessara::fuzz {

// What decodes must encode, read back as the same record, and encode to the same bytes again:
// a document the SDK hands on (a step it re-sends, a section it nests) keeps its meaning.
template <typename T> void checkRoundTrip(const T& decoded) {
    const std::optional<QByteArray> encoded = encodeDocument<T>(decoded);
    FUZZ_CHECK(encoded.has_value());
    const std::optional<T> again = decodeDocument<T>(*encoded);
    FUZZ_CHECK(again.has_value());
    FUZZ_CHECK(*again == decoded);
    FUZZ_CHECK(encodeDocument<T>(*again) == encoded);
}

// Decodes the input as T the way the backend client does and checks the round trip of what came out.
template <typename T> std::optional<T> decodeAndRoundTrip(QByteArrayView input) {
    std::optional<T> decoded = decodeDocument<T>(input);
    if (decoded)
        checkRoundTrip(*decoded);
    return decoded;
}

} // namespace tessara::fuzz
