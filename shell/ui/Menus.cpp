#include "shell/ui/Menus.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <optional>
#include <vector>

#include "res/Menus.h"
#include "res/ui/UiText.h"
#include "shell/ui/CommandRouter.h"

namespace quill {
namespace {

struct SeriesInMenu {
  CommandId first;
  CommandId last;
  QAction* placeholder;  ///< stands in for the entries while there are none; null for nothing
};

void PrepareMenu(QMenu& menu, const Menu& table, CommandRouter& router);

void AddEntry(QMenu& menu, const MenuEntry& entry, CommandRouter& router, std::vector<CommandId>& ids,
              std::vector<SeriesInMenu>& series) {
  switch (entry.kind) {
    case MenuEntry::Kind::kSeparator:
      menu.addSeparator();
      return;
    case MenuEntry::Kind::kSubmenu:
      PrepareMenu(*menu.addMenu(UiText(entry.submenu->text)), *entry.submenu, router);
      return;
    case MenuEntry::Kind::kCommands:
    case MenuEntry::Kind::kSeries:
      for (int i = 0; i <= entry.last - entry.first; ++i) {
        const CommandId id = entry.first + i;
        // Numbers between two commands of a run may be free.
        if (entry.kind == MenuEntry::Kind::kCommands && FindCommand(id) == nullptr) continue;
        ids.push_back(id);
        menu.addAction(router.Action(id));
      }
  }
  if (entry.kind != MenuEntry::Kind::kSeries) return;
  series.push_back({entry.first, entry.last, nullptr});
  if (entry.emptyText == StringId{}) return;
  series.back().placeholder = menu.addAction(UiText(entry.emptyText));
  series.back().placeholder->setEnabled(false);
}

/// What has to be looked after each time that a menu opens.
struct MenuContents {
  std::vector<CommandId> ids;
  std::vector<SeriesInMenu> series;
};

void Update(const MenuContents& contents, CommandRouter& router) {
  for (const SeriesInMenu& s : contents.series) router.PrepareSeries(s.first);
  for (CommandId id : contents.ids) {
    router.Refresh(id);
    router.EnsureIcon(id);
  }
  for (const SeriesInMenu& s : contents.series) {
    if (s.placeholder == nullptr) continue;
    bool any = false;
    for (int i = 0; i <= s.last - s.first && !any; ++i) any = router.Action(s.first + i)->isVisible();
    s.placeholder->setVisible(!any);
  }
}

/// The entries are made when the menu opens for the first time: most never do.
void PrepareMenu(QMenu& menu, const Menu& table, CommandRouter& router) {
  QObject::connect(&menu, &QMenu::aboutToShow, &router,
                   [&menu, &table, &router, contents = std::optional<MenuContents>()]() mutable {
                     if (!contents) {
                       contents.emplace();
                       for (const MenuEntry& entry : table.entries) {
                         AddEntry(menu, entry, router, contents->ids, contents->series);
                       }
                     }
                     Update(*contents, router);
                   });
}

}  // namespace

void BuildMenuBar(QMenuBar& bar, CommandRouter& router) {
  for (const Menu& menu : MenuBar()) PrepareMenu(*bar.addMenu(UiText(menu.text)), menu, router);
}

QMenu* FindMenu(const QMenuBar& bar, const QString& title) {
  for (QAction* action : bar.actions()) {
    if (action->text().remove(u'&') == title) return action->menu();
  }
  return nullptr;
}

}  // namespace quill
