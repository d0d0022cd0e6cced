#include "tessara/platform/Alert.h"

#include <QMessageBox>
#include <QPushButton>

namespace tessara {

QMessageBox* showAlert(QWidget* parent, const QString& title, const QString& message,
                       std::vector<AlertAction> actions, const QColor& tint) {
    auto* box = new QMessageBox(parent); // owned by `parent`; deletes itself on close
    box->setObjectName(QStringLiteral("alert"));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(title);
    box->setText(title);
    box->setInformativeText(message);
    box->setIcon(QMessageBox::NoIcon);
    box->setWindowModality(Qt::WindowModal);

    for (auto& action : actions) {
        const auto role = action.style == AlertAction::Style::cancel ? QMessageBox::RejectRole
                                                                     : QMessageBox::AcceptRole;
        QPushButton* button = box->addButton(action.title, role);
        button->setObjectName(action.objectName);
        QPalette pal = button->palette();
        pal.setColor(QPalette::ButtonText, action.style == AlertAction::Style::destructive ? QColor(0xff, 0x3b, 0x30) : tint);
        button->setPalette(pal);
        if (action.preferred) {
            box->setDefaultButton(button);
            QFont f = button->font();
            f.setBold(true);
            button->setFont(f);
        }
        if (action.style == AlertAction::Style::cancel)
            box->setEscapeButton(button);
        auto handler = std::move(action.handler);
        QObject::connect(button, &QPushButton::clicked, box, [handler] {
            if (handler)
                handler();
        });
    }
    box->open();
    return box;
}

} // namespace tessara
