#pragma once
#include <QDialog>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "settings/AppProfile.h"

class QLabel;
class QListView;
class QPushButton;

namespace quill {

class HistoryCombo;
class GrepResultModel;
struct GrepTotals;

/// What find in files needs of the program around it.
struct GrepHost {
  AppProfile profile;
  /// Shows a line, counted from 1, of a file. Path bytes are the file system's.
  std::function<void(const std::string& path, int64_t line)> open;
  /// Lets the user choose a directory, from where he is; empty when he does not.
  std::function<std::string(const std::string& from)> browse;
};

/// The dialog that finds a text in all scripts of a directory. It stays open while the user goes from
/// result to result.
class CGrep : public QDialog {
  Q_OBJECT

 public:
  explicit CGrep(GrepHost host, QWidget* parent = nullptr);

  /// Shows the dialog ready for typing. A directory is proposed when none was used before, a text
  /// replaces the last one.
  void Open(const std::string& directory, const std::optional<std::string>& text);
  void done(int result) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void Connect();
  void Search();
  void Browse();
  void OpenResult(int row);
  void ShowTotals(const GrepTotals& totals);
  void UpdateButtons();
  void RestorePlace();
  void SavePlace();

  GrepHost m_host;
  HistoryCombo* m_directory;
  HistoryCombo* m_text;
  QPushButton* m_browse;
  QPushButton* m_search;
  QPushButton* m_close;
  GrepResultModel* m_model;
  QListView* m_results;
  QLabel* m_status;
};

}  // namespace quill
