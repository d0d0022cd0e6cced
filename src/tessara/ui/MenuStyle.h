#pragma once

class QMenu;

namespace tessara {

// Gives a control's pop-up menu the look of the form: rounded panel, roomy rows, the
// theme's font, a tint wash on the row under the pointer.
// Check marks are shown by markCheckedActions, in the tint colour.
void applyMenuStyle(QMenu* menu);

// Gives the checked actions of `menu` a check mark icon and the others none.
void markCheckedActions(QMenu* menu);

} // namespace tessara
