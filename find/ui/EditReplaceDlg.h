#pragma once
#include <memory>

#include "find/ui/SearchDialog.h"
#include "text/search/ReplaceSession.h"

class QRadioButton;

namespace quill {

class TextWatch;

/// The replace dialog: finds downwards without going on at the start, in the whole text or in the block
/// that was selected when the dialog opened.
class CEditReplaceDlg : public SearchDialog {
  Q_OBJECT

 public:
  explicit CEditReplaceDlg(FindHost host, QWidget* parent = nullptr);
  ~CEditReplaceDlg() override;

  void UpdateButtons() override;
  void done(int result) override;

 protected:
  void BeginIn(CCrystalEditView* view, const SearchRequest& search) override;
  void FindNext() override;
  void SaveMore() override;

 private:
  struct Work;

  void BuildControls();
  void BeginWork(CCrystalEditView& view, TextPosition start, TextRange block);
  /// The session of the active view; begins a new one where the user has gone meanwhile, at or behind
  /// what he has selected. Null when nothing can be searched.
  Work* WorkOfActiveView(bool withSelected);
  void Replace();
  void ReplaceAll();
  /// A search of the session ended: shows what it selected, or that there is nothing more.
  void Finish(Work& work, bool found);
  ReplaceRequest ReplacementRequest() const;
  bool InBlock() const;

  HistoryCombo* m_with;
  QRadioButton* m_selection;
  QRadioButton* m_wholeFile;
  QPushButton* m_replace;
  QPushButton* m_replaceAll;
  std::unique_ptr<Work> m_work;
};

}  // namespace quill
