// The answer of a section load: a list of step documents, of which the client takes the first.

#include "support/FuzzSupport.h"
#include "tessara/documents/SubmissionJSON.h"

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::runGuarded([&] {
        const auto sections =
            fuzz::decodeAndRoundTrip<std::vector<SubmissionJSON>>(fuzz::bytesOf(data, size));
        // An empty list ends the program on purpose once the client takes its first entry.
        if (sections && sections->empty())
            fuzz::countFatalEnd();
    });
    return 0;
}
