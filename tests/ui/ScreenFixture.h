#pragma once
#include <string>
#include <vector>

#include "ui/ShellFixture.h"

class QListView;
class QTabBar;
class QTextBrowser;
class QTreeWidget;

namespace quill {

/// The program as its user sees it: what stands in tabs, panes, lists and tips.
class ScreenFixture : public ShellFixture {
 protected:
  QTabBar& TabBar();
  /// Tab titles from left to right, the current one in brackets.
  std::string Tabs();
  /// The panes of the status bar that have a text: "Ln 1, Col 1|DOS|INS|100%".
  std::string Panes();
  std::string Message();

  /// The completion list's rows; null while it is closed.
  QListView* List();
  /// Its selected name; "closed" without a list.
  std::string Selected();
  /// The text of the tip beside the caret; empty without one.
  std::string Tip();
  /// The first line of the command help.
  std::string Help();
  QTextBrowser& HelpPane();

  QTreeWidget& Outline();
  /// The names below the kinds, from top to bottom; the marked one has a star.
  std::string Names();

  std::string Line() { return LineAt(CaretLine()); }
  std::string LineAt(int32_t line);
  int32_t CaretLine();
  /// "3:7", from 1.
  std::string Caret();
  /// In the middle of a character of the active view.
  QPoint At(int32_t line, int32_t column);
  void Click(int32_t line, int32_t column, Qt::KeyboardModifiers modifiers = {});
  void Wheel();
  void PressAll(std::initializer_list<const char*> keys);
};

}  // namespace quill
