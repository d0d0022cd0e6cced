// The three credit answers: the product list, an instalment plan and the possible first dates.
// Each input is read as all three, so a mutation of one document's keys reaches the others too.

#include "support/FuzzSupport.h"
#include "tessara/documents/CreditInstalmentDatesJSON.h"
#include "tessara/documents/CreditInstalmentDetailsJSON.h"
#include "tessara/documents/CreditProductJSON.h"

#include <algorithm>

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView input = fuzz::bytesOf(data, size);
    fuzz::runGuarded([&] { fuzz::decodeAndRoundTrip<std::vector<CreditProductJSON>>(input); });
    fuzz::runGuarded([&] { fuzz::decodeAndRoundTrip<CreditInstalmentDetailsJSON>(input); });
    fuzz::runGuarded([&] {
        if (const auto dates = fuzz::decodeAndRoundTrip<CreditInstalmentDatesJSON>(input)) {
            // The calculator relies on the order and on every date being a real day.
            FUZZ_CHECK(std::is_sorted(dates->availableDates.begin(), dates->availableDates.end()));
            for (const QDate& day : dates->availableDates)
                FUZZ_CHECK(day.isValid());
            FUZZ_CHECK(!dates->defaultFirstInstallmentDate || dates->defaultFirstInstallmentDate->isValid());
        }
    });
    return 0;
}
