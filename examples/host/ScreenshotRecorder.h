#pragma once

#include <QString>

class QWidget;
class QImage;

namespace tessara::demo {

// Keeps a numbered picture of each screen and alert as it appears ("01-personal-data.png",
// "02-personal-data-alert.png"), so a run without a display can still be looked at.
// Disabled when made with an empty directory. Main thread only.
class ScreenshotRecorder {
public:
    explicit ScreenshotRecorder(QString directory);

    bool enabled() const { return !directory_.isEmpty(); }
    QString directory() const { return directory_; }

    // Saves `widget` as it is drawn now. Returns the file written, empty when disabled or failed.
    QString captureWidget(QWidget* widget, const QString& name);
    // Saves `background` dimmed with `alert` drawn centred over it, the way the user sees a
    // modal alert. `alert` is a top-level window of its own, so a plain grab would miss it.
    QString captureAlert(QWidget* background, QWidget* alert, const QString& name);

    // "07-personal-data.png": the order number in two digits, then `name` made safe for a file.
    static QString fileName(int index, const QString& name);
    static QImage composeAlert(const QImage& background, const QImage& alert);

    int count() const { return next_ - 1; }

private:
    QString save(const QImage& image, const QString& name);

    QString directory_;
    int next_ = 1;
    bool prepared_ = false;
};

} // namespace tessara::demo
