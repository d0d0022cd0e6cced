#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tessara {

// The question every step screen asks before it closes on the user's data: `title` over the
// shared warning, "Остани" (cancelAction) and "Затвори" (destroyAction). `close` runs on
// "Затвори" only while `screen` still exists.
void showCloseConfirmation(QWidget* screen, const QString& title, std::function<void()> close);

} // namespace tessara
