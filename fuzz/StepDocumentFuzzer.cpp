// A step document as every start, open and submit call receives it, the same bytes as the body of
// a refused request, and as the local resource wrapped under "direction".

#include "support/FuzzSupport.h"
#include "tessara/backend/TSRBackendError.h"
#include "tessara/documents/SubmissionContainer.h"
#include "tessara/documents/SubmissionJSON.h"

using namespace tessara;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView input = fuzz::bytesOf(data, size);
    fuzz::runGuarded([&] {
        const auto step = fuzz::decodeAndRoundTrip<SubmissionJSON>(input);
        if (step) {
            // Decoding fills no field's nested list: only the section expansion does.
            for (const FieldJSON& field : step->fields)
                FUZZ_CHECK(!field.fields.has_value());
        }
        fuzz::decodeAndRoundTrip<SubmissionContainer>(input);
        TSRBackendError::decode(input);
    });
    return 0;
}
