// The answer of the verification status call, and what its status word does to the screen.

#include "support/FuzzSupport.h"
#include "tessara/documents/KYCStatusJSON.h"
#include "tessara/kyc/KYCStatusTable.h"

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    fuzz::runGuarded([&] {
        if (const auto status = fuzz::decodeAndRoundTrip<KYCStatusJSON>(fuzz::bytesOf(data, size))) {
            // Only a terminal word can leave the step waiting for the user's button.
            if (KYCStatusTable::waitsForButton(status->code))
                FUZZ_CHECK(KYCStatusTable::effectOf(status->code) == KYCStatusTable::Effect::terminal);
            else
                KYCStatusTable::effectOf(status->code);
        }
    });
    return 0;
}
