#pragma once
#include <QComboBox>
#include <string>

#include "settings/HistoryList.h"
#include "settings/Settings.h"

namespace quill {

/// An editable box that offers past entries and keeps them, with its last text, in the application
/// profile.
class HistoryCombo : public QComboBox {
  Q_OBJECT

 public:
  /// What the entries' bytes are.
  enum class Holds {
    kScriptText,  ///< one line of a script: nothing else can be typed
    kPath,
  };

  HistoryCombo(const AppProfile& profile, const ProfileHistory& history, Holds holds, QWidget* parent);

  /// Reads the entries; the text stays what it is.
  void LoadEntries();
  /// What the box showed last.
  const std::string& StoredText() const { return m_history.LastText(); }
  /// Makes the text the newest entry and stores all of them.
  void SaveText();

  std::string Text() const;
  void SetText(const std::string& text);
  bool IsEmpty() const { return currentText().isEmpty(); }
  /// Gives the box the focus with its text selected, ready to be typed over.
  void FocusText();

 private:
  QString Shown(const std::string& text) const;
  void ListEntries();
  void ShowText(const QString& text);

  Holds m_holds;
  HistoryList m_history;
};

}  // namespace quill
