// The verification simulator's decoding of the client's video: the input is cut into Annex B units
// at its start codes and fed one unit at a time, as the units arrive one per socket message.

#include "backend/H264StreamDecoder.h"
#include "support/FuzzSupport.h"

#include <vector>

using namespace tessara;

namespace {

// Where each start code (00 00 01, or 00 00 00 01) begins.
std::vector<qsizetype> unitStarts(QByteArrayView stream) {
    std::vector<qsizetype> starts;
    for (qsizetype i = 0; i + 2 < stream.size(); ++i) {
        if (stream[i] != 0 || stream[i + 1] != 0)
            continue;
        if (stream[i + 2] == 1) {
            starts.push_back(i);
            i += 2;
        } else if (i + 3 < stream.size() && stream[i + 2] == 0 && stream[i + 3] == 1) {
            starts.push_back(i);
            i += 3;
        }
    }
    return starts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArrayView stream = fuzz::bytesOf(data, size);
    std::vector<qsizetype> starts = unitStarts(stream);
    // Bytes before the first start code travel as a unit of their own, which must yield nothing.
    if (starts.empty() || starts.front() != 0)
        starts.insert(starts.begin(), 0);
    starts.push_back(stream.size());

    H264StreamDecoder decoder;
    for (size_t i = 0; i + 1 < starts.size(); ++i) {
        const QByteArrayView unit = stream.sliced(starts[i], starts[i + 1] - starts[i]);
        const int type = H264StreamDecoder::nalType(unit);
        FUZZ_CHECK(type >= -1 && type < 32);
        const H264StreamDecoder::Picture picture = decoder.feed(unit);
        if (type < 0) {
            FUZZ_CHECK(!picture.decoded);
            continue;
        }
        // A completed picture has a size.
        if (picture.decoded)
            FUZZ_CHECK(picture.width > 0 && picture.height > 0);
        FUZZ_CHECK(decoder.profile() >= 0 && decoder.profile() < 256 && decoder.level() >= 0 &&
                   decoder.level() < 256);
    }
    return 0;
}
