#pragma once

#include <QString>
#include <QtGlobal>

namespace tessara {

// What the simulated verification service saw of one attempt's video, for
// "/_demo/submissions/{id}".
struct VerificationReport {
    QString script;
    int attempt = 0;  // 1 for the first attempt of the submission, then one more per new attempt
    QString status;   // the last status word the service sent
    qint64 units = 0; // binary messages holding video
    qint64 bytes = 0; // their total size
    int pictures = 0; // pictures decoded
    int width = 0;    // of the last picture decoded
    int height = 0;
    int keyFrames = 0;
    int profile = 0; // profile_idc and level_idc of the last sequence parameter set (66 and 41: Baseline 4.1)
    int level = 0;
    qint64 firstPictureMs = -1; // from the first join of the attempt to the first picture; -1 before
    int reconnects = 0;         // joins after the first, within the attempt
    QString streamPath;         // the received stream as an .h264 file; empty when it cannot be written
};

} // namespace tessara
