#include "tessara/ui/MenuStyle.h"

#include "tessara/appearance/CurrentAppearance.h"
#include "tessara/ui/Glyphs.h"
#include "tessara/ui/CssColor.h"

#include <QMenu>

namespace tessara {

void applyMenuStyle(QMenu* menu) {
    TSRAppearance& theme = currentAppearance();
    const bool dark = TSRAppearance::isDarkStyle();
    QColor wash = theme.tintColor();
    wash.setAlphaF(0.14f);
    const QColor panel = dark ? QColor(0x2c, 0x2c, 0x2e) : QColor(Qt::white);
    const QColor border = dark ? QColor(255, 255, 255, 40) : QColor(0, 0, 0, 40);
    // Rounded corners need a see-through window behind the panel.
    menu->setWindowFlags(menu->windowFlags() | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint);
    menu->setAttribute(Qt::WA_TranslucentBackground);
    menu->setFont(theme.inputFont());
    menu->setStyleSheet(
        QStringLiteral("QMenu{background-color:%1;border:1px solid %2;border-radius:12px;padding:6px;}"
                       "QMenu::item{color:%3;padding:10px 20px 10px 34px;border-radius:8px;}"
                       "QMenu::item:selected{background-color:%4;}"
                       "QMenu::item:disabled{color:%5;}"
                       "QMenu::icon{left:10px;}"
                       "QMenu::indicator{width:0px;height:0px;}")
            .arg(cssColor(panel), cssColor(border), cssColor(theme.textColor()), cssColor(wash),
                 cssColor(TSRAppearance::placeholderTextColor())));
}

void markCheckedActions(QMenu* menu) {
    const QIcon check = glyphIcon(Glyph::checkmark, QSize(16, 16), currentAppearance().tintColor());
    for (QAction* action : menu->actions()) {
        if (action->isCheckable())
            action->setIcon(action->isChecked() ? check : QIcon());
    }
}

} // namespace tessara
