#pragma once
#include <QHash>
#include <QObject>
#include <QTimer>
#include <functional>
#include <map>

#include "res/Commands.h"
#include "res/Strings.h"

class QAction;
class QIcon;
class QKeyEvent;
class QWidget;

namespace quill {

class KeyBindings;

/// What a command looks like at this moment.
struct CommandState {
  bool enabled = true;
  bool checked = false;
  bool visible = true;
  QString text;    ///< menu text; empty: as in the command table
  QString reason;  ///< why it is disabled, for the status bar

  static CommandState Disabled(StringId why);
  /// Enabled when `condition` holds, else disabled for the reason given.
  static CommandState EnabledIf(bool condition, StringId why);
  static CommandState Checked(bool checked);
};

/// One action for every command of the table, and who carries it out. Menus, toolbars and keys all go
/// through these actions. A command without a handler is disabled and says why.
class CommandRouter : public QObject {
  Q_OBJECT

 public:
  using Run = std::function<void()>;
  using StateOf = std::function<CommandState()>;
  using RunNumbered = std::function<void(int)>;
  using StateOfNumbered = std::function<CommandState(int)>;

  /// The actions' keys work in `window` and in the bars that float before it.
  explicit CommandRouter(QWidget& window);

  /// Without `state` the command can always be used.
  void Register(CommandId id, Run run, StateOf state = {});
  /// The commands first..last, told apart by their distance from the first. `prepare` is called each time
  /// that a menu is about to show them.
  void RegisterSeries(CommandId first, CommandId last, const RunNumbered& run, const StateOfNumbered& state,
                      const Run& prepare = {});
  bool HasHandler(CommandId id) const;

  QAction* Action(CommandId id);
  /// Carries a command out as if it had been chosen; false when it is disabled at this moment.
  bool Execute(CommandId id);

  /// Before the states of the series that begins with `first` are asked for a menu.
  void PrepareSeries(CommandId first);
  /// Brings an action's text, check mark and usability up to date.
  void Refresh(CommandId id);
  void RefreshAll();
  /// `RefreshAll` once the program is idle: for toolbars while the user types.
  void RefreshSoon();
  /// Brings those actions up to date that the key is bound to, so that a key pressed right after another
  /// finds its command in the state that the first one left.
  void RefreshFor(const QKeyEvent& key);
  /// What this very key is bound to, a key of the number pad told from its twin among the main keys; `kNone`
  /// when nothing is.
  CommandId CommandOfKey(const QKeyEvent& key) const;
  /// Why the command that the key is bound to cannot be used; empty when it can, and for other keys.
  QString WhyNot(const QKeyEvent& key);

  /// Gives the actions the keys of the table, or the user's where there are any.
  void SetKeys(const KeyBindings& bindings);
  /// Loads the icon of an action the first time that it is about to be seen.
  void EnsureIcon(CommandId id);
  /// Takes the place of the built-in icon.
  void SetIcon(CommandId id, const QIcon& icon);

 private:
  struct Entry {
    const Command* command = nullptr;  ///< null for a number of a series without a row
    QAction* action = nullptr;
    Run run;
    StateOf state;
    Run prepare;  ///< of the series that begins here
    bool hasIcon = false;
  };
  Entry& EntryOf(CommandId id);
  Entry* BoundTo(const QKeyEvent& key);
  void Apply(Entry& entry);
  QString MenuText(const Entry& entry, const QString& text) const;
  void SetTips(Entry& entry, const CommandState& state);

  QWidget& m_window;
  std::map<CommandId, Entry> m_entries;
  QHash<int, CommandId> m_byKey;
  QTimer m_refresh;
  bool m_defaultKeys = true;
};

}  // namespace quill
