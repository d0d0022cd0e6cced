#pragma once

#include <QColor>
#include <QString>

#include <functional>
#include <vector>

class QMessageBox;
class QWidget;

namespace tessara {

// A modal alert shown without blocking (QMessageBox::open). One button per action, each
// with its objectName so tests and the autopilot can press it. The box deletes itself
// when closed. Main thread only.
struct AlertAction {
    enum class Style { normal, cancel, destructive };

    QString title;
    QString objectName;
    Style style = Style::normal;
    bool preferred = false;
    std::function<void()> handler; // may be empty: the action only closes the alert
};

// The box's objectName is "alert"; `tint` colours its buttons.
QMessageBox* showAlert(QWidget* parent, const QString& title, const QString& message,
                       std::vector<AlertAction> actions, const QColor& tint);

} // namespace tessara
