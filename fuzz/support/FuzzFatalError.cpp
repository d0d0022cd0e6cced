// Replaces the product's FatalError.cpp in the fuzz build only. The product aborts; here the
// decoding code is plain C++ with no event loop in between, so an exception unwinds back to the
// harness, which counts the input as rejected and goes on with the next one.

#include "support/FuzzSupport.h"
#include "tessara/platform/FatalError.h"

#include <atomic>

namespace tessara {

namespace fuzz {

namespace {

std::atomic<long long> fatalEnds{0};

struct FatalEndReport {
    ~FatalEndReport() { std::fprintf(stderr, "FUZZ-FATAL-ENDS: %lld\n", fatalEnds.load()); }
} report;

} // namespace

void countFatalEnd() {
    ++fatalEnds;
}

} // namespace fuzz

void fatalError(const QString& message) {
    throw fuzz::FatalEnd{message};
}

} // namespace tessara
