#pragma once
#include <QString>

class QMenu;
class QMenuBar;

namespace quill {

class CommandRouter;

/// Fills the menu bar from the menu table. A menu brings its entries up to date, and loads their icons,
/// each time that it opens.
void BuildMenuBar(QMenuBar& bar, CommandRouter& router);

/// The menu of that title, mnemonic marks left out, on the menu bar; null when there is none.
QMenu* FindMenu(const QMenuBar& bar, const QString& title);

}  // namespace quill
