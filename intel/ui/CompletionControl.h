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
class Templates;

/// Opens the completion list on command, behind an object's "." and after the first letters of a word, leads
/// it while the user types, and writes the name that is taken.
class CompletionControl : public QObject, private InputTaker {
  Q_OBJECT

 public:
  struct Needs {
    QWidget& window;  ///< the list lies above it
    ActiveView& active;
    ActiveScript& script;
    Templates& templates;
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
  /// A command was written, and the caret is where its arguments go.
  void CommandWritten();

 protected:
  /// Of the window: the list does not stay behind when it is moved.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool TakeInput(QEvent& event) override;
  CQuillView* View() const;
  void OnTyped(char character);
  void OpenBehindDot();
  void OpenInWord();
  void OnCaretMoved();
  /// Why the list opens.
  enum class Cause { kAsked, kDot, kLetters };
  /// False when nothing fits. Behind letters a name must begin with them, and not be written already: a list
  /// for which nobody asked does not guess.
  bool OpenAt(CQuillView& view, const CompletionRequest& request,
              const std::shared_ptr<const ScriptFacts>& facts, Cause cause);
  void Show(CQuillView& view, CompletionList list, const ObjectKind* object, Cause cause);
  /// True when the text must not see the key.
  bool OnKey(const QKeyEvent& event);
  /// Whether the key would better do something else than take the selected name.
  bool IsIdle(CompletionKey key);
  void Take();
  std::optional<CompletionRequest> RequestAtCaret(CQuillView& view, const Outline& outline) const;
  std::shared_ptr<const CompletionNames> AllNames(const CQuillView& view, Cause cause);
  QRect WordOnScreen(const CQuillView& view) const;

  Needs m;
  QPointer<CCodeCompletion> m_list;  ///< made when first needed
  CompletionKeys m_keys;
  Cause m_cause = Cause::kAsked;
  TextPosition m_wordStart;
  std::shared_ptr<const ScriptFacts> m_facts;  ///< what the open list was made from
  const ObjectKind* m_object = nullptr;        ///< whose members the open list shows
  TextPosition m_sentAway{-1, 0};              ///< the word whose list was closed with Esc

  /// Names of every kind, and what they were made from.
  std::shared_ptr<const CompletionNames> m_names;
  std::shared_ptr<const ScriptFacts> m_namesFacts;
  const NameSet* m_namesKeywords = nullptr;
  std::vector<std::string> m_namesTemplates;
};

}  // namespace quill
