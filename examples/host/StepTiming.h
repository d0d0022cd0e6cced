#pragma once

#include <QString>

namespace tessara::demo {

// Where the time of one step went, in milliseconds. -1 marks a phase that did not happen (the
// last step is never answered).
struct StepTiming {
    QString directionId;
    QString type;
    qint64 settleMs = -1; // shown until laid out and done animating
    qint64 fillMs = -1;   // filling the controls
    qint64 answerMs = -1; // the press until the next screen (or alert) appeared

    qint64 totalMs() const {
        qint64 total = 0;
        for (qint64 part : {settleMs, fillMs, answerMs})
            total += part > 0 ? part : 0;
        return total;
    }
};

} // namespace tessara::demo
