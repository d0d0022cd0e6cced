#pragma once

#include <QString>

namespace tessara {

// What a status word of the verification service does to the screen. The rows are tried in
// this order; a word in no row hides the document frame.
class KYCStatusTable {
public:
    KYCStatusTable() = delete;

    enum class Effect {
        terminal,  // the step is over: stop, say goodbye, leave
        noEffect,  // a picture problem: only the message changes
        idCard,    // show the document
        selfie,    // show the face
        stopMedia, // pause the camera
        noService, // the service is unavailable: the way out changes
        other,     // anything else: hide the document frame
    };

    static Effect effectOf(const QString& word);
    // The terminal word after which the user, not a timer, leaves the step.
    static bool waitsForButton(const QString& word);
};

} // namespace tessara
