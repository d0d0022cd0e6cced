#pragma once

#include <QByteArrayView>
#include <memory>

class ISVCDecoder;

namespace tessara {

// Decodes an H.264 stream handed over one Annex B unit at a time (start code included), as the
// verification client sends it, and counts what came out. Only whole, correctly decoded pictures
// count: units that refer to pictures never received (after a lost connection) yield nothing until
// the next key frame.
class H264StreamDecoder {
public:
    // What one unit gave.
    struct Picture {
        bool decoded = false;
        int width = 0;
        int height = 0;
        bool keyFrame = false;
    };

    H264StreamDecoder();
    ~H264StreamDecoder();
    H264StreamDecoder(const H264StreamDecoder&) = delete;
    H264StreamDecoder& operator=(const H264StreamDecoder&) = delete;

    // Feeds one unit; says whether it completed a picture.
    Picture feed(QByteArrayView unit);

    // From the last sequence parameter set seen; 0 before the first.
    int profile() const { return profile_; }
    int level() const { return level_; }

    // The NAL unit type of an Annex B unit (the byte after a 3- or 4-byte start code); -1 when the
    // unit has no start code.
    static int nalType(QByteArrayView unit);

private:
    struct DecoderDeleter {
        void operator()(ISVCDecoder* decoder) const;
    };
    std::unique_ptr<ISVCDecoder, DecoderDeleter> decoder_;
    int profile_ = 0;
    int level_ = 0;
    bool sliceOfKeyFrame_ = false;
};

} // namespace tessara
