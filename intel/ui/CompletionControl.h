#pragma once
#include <QPointer>
#include <memory>
#include <optional>
#include <string>

#include "intel/outline/ScriptFacts.h"
#include "intel/ui/CodeCompletion.h"
#include "intel/writing/Completion.h"
#include "shell/ui/QuillView.h"
#include "text/ui/InputChain.h"

class QKeyEvent;

namespace quill {

class ActiveScript;
class ActiveView;
class CommandDatabase;
class SettingsStore;

/// Opens the completion list on command and behind an object's ".", leads it while the user types, and
/// writes the name that is taken.
class CompletionControl : public QObject, private InputTaker {
  Q_OBJECT

 public:
  struct Needs {
    QWidget& window;  ///< the list lies above it
    ActiveView& active;
    ActiveScript& script;
    const CommandDatabase& commands;
    SettingsStore& settings;
  };
  explicit CompletionControl(const Needs& needs);
  ~CompletionControl() override;

  /// Lists what the word at the caret of the active view can become. When that is nothing, the status bar is
  /// given a sentence.
  void Open();
  bool IsOpen() const;
  void Close();
  /// The selected name while the list is open.
  std::optional<std::string> SelectedEntry() const;
  /// On the screen; empty while the list is closed.
  QRect Place() const;
  bool IsBelowCaret() const;

 Q_SIGNALS:
  /// The list opened or closed, or another name is selected.
  void EntryChanged();

 protected:
  /// Of the window: the list does not stay behind when it is moved.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TakeInput(QEvent& event) override;
  CQuillView* View() const;
  void OnTyped(char character);
  void OnCaretMoved();
  /// False when nothing fits.
  bool OpenAt(CQuillView& view, const CompletionRequest& request,
              const std::shared_ptr<const ScriptFacts>& facts);
  /// True when the text must not see the key.
  bool OnKey(const QKeyEvent& event);
  void Take();
  std::optional<CompletionRequest> RequestAtCaret(CQuillView& view, const Outline& outline) const;
  std::shared_ptr<const CompletionNames> NamesFor(const CompletionRequest& request, const CQuillView& view);
  QRect WordOnScreen(const CQuillView& view) const;

  Needs m;
  QPointer<CCodeCompletion> m_list;  ///< made when first needed
  CompletionKeys m_keys;
  TextPosition m_wordStart;
  std::shared_ptr<const ScriptFacts> m_facts;  ///< what the open list was made from
  const ObjectKind* m_object = nullptr;        ///< whose members the open list shows

  /// Names of every kind, and what they were made from.
  std::shared_ptr<const CompletionNames> m_names;
  std::shared_ptr<const ScriptFacts> m_namesFacts;
  const NameSet* m_namesKeywords = nullptr;
};

}  // namespace quill
