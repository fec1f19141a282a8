#pragma once
#include <memory>
#include <vector>

#include "find/ui/SearchDialog.h"
#include "text/search/ReplaceSession.h"

class QRadioButton;

namespace quill {

class TextWatch;

/// The replace dialog: finds downwards without going on at the start, in the whole text or in the block
/// that was selected when the dialog opened, or that has been selected since.
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
  void Activated() override;

 private:
  struct Work;

  enum class Step { kFindNext, kReplace, kReplaceAll };

  void BuildControls();
  Work& BeginWork(CCrystalEditView& view, TextRange block);
  void PreferBlock(bool prefers);
  /// Null when none has begun in this view, or its text has gone.
  Work* WorkIn(const CCrystalEditView* view) const;
  /// Makes what the user has selected since the last look the block, unless it is a place found.
  void AdoptSelection(CCrystalEditView& view);
  /// The work of the active view, ready for a step from where the user is now. Null when nothing can be
  /// searched.
  Work* WorkFor(Step step);
  bool IsMatchSelected(const CCrystalEditView& view) const;
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
  std::vector<std::unique_ptr<Work>> m_works;  ///< of the views that were active since the dialog opened
};

}  // namespace quill
