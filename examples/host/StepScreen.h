#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

namespace tessara::demo {

// A step screen of the SDK as a host sees it: a widget named after its kind
// ("TSRFormController", ...) whose step it shows through read-only properties. Found in the
// root the SDK lays over the host's widget. Main thread only.
class StepScreen {
public:
    StepScreen() = default;
    explicit StepScreen(QWidget* widget);

    // The step screen on show over `host`, from the newest root that is shown; empty when none.
    static StepScreen visibleIn(QWidget* host);
    // Deletes every root the SDK laid over `host`, at once.
    static void withdrawAll(QWidget* host);

    QWidget* widget() const { return widget_; }
    explicit operator bool() const { return widget_ != nullptr; }
    bool operator==(const StepScreen& other) const { return widget_ == other.widget_; }

    // The screen's kind: its objectName, e.g. "TSRFormController".
    QString kind() const;
    QString directionId() const;
    QString type() const;
    QString submissionId() const;
    // The step this one replaced; empty for the first or a reopened step.
    QString previousDirectionId() const;
    // True while the screen takes no input, a step being on its way.
    bool isLocked() const;

private:
    QString text(const char* property) const;

    QPointer<QWidget> widget_;
};

} // namespace tessara::demo
