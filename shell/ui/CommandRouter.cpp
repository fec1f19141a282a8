#include "shell/ui/CommandRouter.h"

#include <QAction>
#include <QKeyEvent>
#include <QWidget>
#include <stdexcept>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "shell/KeyBindings.h"
#include "widgets/PlainNames.h"

namespace quill {
namespace {

/// How long toolbars may lag behind: shorter than a look, longer than the gap between two keys.
constexpr int kRefreshDelay = 60;

QKeySequence ToSequence(std::string_view key) {
  return QKeySequence::fromString(UiText(key), QKeySequence::PortableText);
}

}  // namespace

CommandState CommandState::Disabled(StringId why) {
  CommandState state;
  state.enabled = false;
  state.reason = UiText(why);
  return state;
}

CommandState CommandState::EnabledIf(bool condition, StringId why) {
  return condition ? CommandState() : Disabled(why);
}

CommandState CommandState::Checked(bool checked) {
  CommandState state;
  state.checked = checked;
  return state;
}

CommandRouter::CommandRouter(QWidget& window) : QObject(&window), m_window(window) {
  for (const Command& command : Commands()) EntryOf(command.id);
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(kRefreshDelay);
  connect(&m_refresh, &QTimer::timeout, this, &CommandRouter::RefreshAll);
}

CommandRouter::Entry& CommandRouter::EntryOf(CommandId id) {
  const auto [found, isNew] = m_entries.try_emplace(id);
  Entry& entry = found->second;
  if (!isNew) return entry;
  entry.command = FindCommand(id);
  entry.action = new QAction(this);
  if (entry.command != nullptr) entry.action->setCheckable(entry.command->checkable);
  entry.action->setEnabled(false);
  // What the toolkit would move elsewhere by guessing from the text stays where the tables put it.
  entry.action->setMenuRole(QAction::NoRole);
  connect(entry.action, &QAction::triggered, this, [this, id] { Execute(id); });
  m_window.addAction(entry.action);
  return entry;
}

void CommandRouter::Register(CommandId id, Run run, StateOf state) {
  Entry& entry = EntryOf(id);
  if (entry.run) throw std::invalid_argument("two handlers for one command");
  entry.run = std::move(run);
  entry.state = std::move(state);
}

void CommandRouter::RegisterSeries(CommandId first, CommandId last, const RunNumbered& run,
                                   const StateOfNumbered& state, const Run& prepare) {
  for (int i = 0; i <= last - first; ++i) {
    Register(
        first + i, [run, i] { run(i); }, [state, i] { return state(i); });
  }
  EntryOf(first).prepare = prepare;
}

void CommandRouter::PrepareSeries(CommandId first) {
  const Entry& entry = EntryOf(first);
  if (entry.prepare) entry.prepare();
}

bool CommandRouter::HasHandler(CommandId id) const {
  const auto found = m_entries.find(id);
  return found != m_entries.end() && found->second.run != nullptr;
}

QAction* CommandRouter::Action(CommandId id) {
  return EntryOf(id).action;
}

bool CommandRouter::Execute(CommandId id) {
  Entry& entry = EntryOf(id);
  Apply(entry);
  if (!entry.action->isEnabled()) return false;
  entry.run();
  RefreshSoon();
  return true;
}

void CommandRouter::Refresh(CommandId id) {
  Apply(EntryOf(id));
}

void CommandRouter::RefreshAll() {
  m_refresh.stop();
  for (auto& [id, entry] : m_entries) Apply(entry);
}

void CommandRouter::RefreshSoon() {
  if (!m_refresh.isActive()) m_refresh.start();
}

CommandRouter::Entry* CommandRouter::BoundTo(const QKeyEvent& key) {
  const int combination = key.keyCombination().toCombined();
  for (int candidate : {combination, combination & ~static_cast<int>(Qt::KeypadModifier)}) {
    const auto found = m_byKey.constFind(candidate);
    if (found != m_byKey.cend()) return &EntryOf(*found);
  }
  return nullptr;
}

void CommandRouter::RefreshFor(const QKeyEvent& key) {
  if (Entry* entry = BoundTo(key)) Apply(*entry);
}

QString CommandRouter::WhyNot(const QKeyEvent& key) {
  const Entry* entry = BoundTo(key);
  return entry == nullptr || entry->action->isEnabled() ? QString() : entry->action->statusTip();
}

CommandId CommandRouter::CommandOfKey(const QKeyEvent& key) const {
  return m_byKey.value(key.keyCombination().toCombined(), CommandId::kNone);
}

void CommandRouter::Apply(Entry& entry) {
  CommandState state;
  if (!entry.run) {
    state = CommandState::Disabled(StringId::kNotInThisVersion);
    if (entry.command != nullptr && !UnavailableReason(*entry.command).empty()) {
      state.reason = UiText(UnavailableReason(*entry.command));
    }
  } else if (entry.state) {
    state = entry.state();
  }
  if (state.text.isEmpty() && entry.command != nullptr) state.text = UiText(entry.command->menuText);
  entry.action->setText(MenuText(entry, state.text));
  entry.action->setEnabled(state.enabled);
  // A number of a series that nobody has filled has no text either.
  entry.action->setVisible(state.visible && !state.text.isEmpty());
  if (entry.command == nullptr) entry.action->setCheckable(state.checked);
  if (entry.action->isCheckable()) entry.action->setChecked(state.checked);
  SetTips(entry, state);
}

/// The text's own key, after a tab, holds only as long as the keys are the table's.
QString CommandRouter::MenuText(const Entry& entry, const QString& text) const {
  if (m_defaultKeys) return text;
  const QString label = text.left(text.indexOf(u'\t'));
  const QKeySequence key = entry.action->shortcut();
  return key.isEmpty() ? label : label + u'\t' + key.toString(QKeySequence::NativeText);
}

void CommandRouter::SetTips(Entry& entry, const CommandState& state) {
  const bool hasReason = !state.enabled && !state.reason.isEmpty();
  const QString help = entry.command == nullptr ? QString() : UiText(entry.command->help);
  entry.action->setStatusTip(hasReason ? state.reason : help);
  if (entry.command == nullptr) return;
  QString tip = UiText(PlainLabel(entry.command->menuText));
  const QKeySequence key = entry.action->shortcut();
  if (!key.isEmpty()) tip += " (" + key.toString(QKeySequence::NativeText) + u')';
  entry.action->setToolTip(plain_names::ForTip(hasReason ? tip + u'\n' + state.reason : tip));
}

void CommandRouter::SetKeys(const KeyBindings& bindings) {
  m_byKey.clear();
  m_defaultKeys = bindings.IsEmpty();
  for (auto& [id, entry] : m_entries) {
    if (entry.command == nullptr) continue;
    QList<QKeySequence> keys;
    for (const std::string& key : bindings.KeysOf(*entry.command)) {
      const QKeySequence sequence = ToSequence(key);
      if (sequence.isEmpty()) continue;
      keys.push_back(sequence);
      m_byKey.insert(sequence[0].toCombined(), id);
    }
    entry.action->setShortcuts(keys);
  }
  RefreshAll();
}

void CommandRouter::EnsureIcon(CommandId id) {
  const Entry& entry = EntryOf(id);
  if (entry.command != nullptr && !entry.hasIcon) SetIcon(id, LoadIcon(entry.command->icon));
}

void CommandRouter::SetIcon(CommandId id, const QIcon& icon) {
  Entry& entry = EntryOf(id);
  entry.hasIcon = true;
  entry.action->setIcon(icon);
}

}  // namespace quill
