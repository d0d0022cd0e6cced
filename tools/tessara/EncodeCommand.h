#pragma once

#include "tessara/kyc/video/CapturePosition.h"
#include "tessara/kyc/video/H264Encoder.h"

#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessara::tool {

// `tessara encode`: runs a camera through the SDK's capture manager, encoder and framing, writes
// every message's bytes in order to a file (an H.264 elementary stream) and prints a summary.
class EncodeCommand {
public:
    struct Options {
        QString output;
        QString filePath;                 // empty: the synthetic camera
        std::optional<int> width, height; // upright frame size
        CapturePosition position = CapturePosition::back;
        int64_t frames = 150;
        double fps = 30.0;
        bool realtime = false;
    };

    explicit EncodeCommand(Options options);

    // Returns the exit status: 0, or 1 with the reason on standard error.
    int run();

    // The summary lines for the pictures seen, at `fps` (its format is the tool's contract).
    static QString summary(const std::vector<H264Encoder::PictureReport>& pictures, double fps);

private:
    Options options_;
};

} // namespace tessara::tool
