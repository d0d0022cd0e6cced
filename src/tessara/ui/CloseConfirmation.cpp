#include "tessara/ui/CloseConfirmation.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/Alert.h"

#include <QPointer>
#include <QWidget>

namespace tessara {

void showCloseConfirmation(QWidget* screen, const QString& title, std::function<void()> close) {
    QPointer<QWidget> guard(screen);
    showAlert(
        screen, title,
        QStringLiteral("Ако го затворите преди да го изпратите, попълнените данни ще се загубят."),
        {AlertAction{
             QStringLiteral("Остани"), QStringLiteral("cancelAction"), AlertAction::Style::cancel, true, {}},
         AlertAction{QStringLiteral("Затвори"), QStringLiteral("destroyAction"),
                     AlertAction::Style::destructive, false,
                     [guard, close = std::move(close)] {
                         if (guard)
                             close();
                     }}},
        currentAppearance().tintColor());
}

} // namespace tessara
