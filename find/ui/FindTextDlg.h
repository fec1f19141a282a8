#pragma once
#include "find/ui/SearchDialog.h"

class QRadioButton;

namespace quill {

/// The find dialog: searches the active view up or down from where the last search ended, and goes on at
/// the other end of the text.
class CFindTextDlg : public SearchDialog {
  Q_OBJECT

 public:
  explicit CFindTextDlg(FindHost host, QWidget* parent = nullptr);

 protected:
  void BeginIn(CCrystalEditView* view, const SearchRequest& search) override;
  void FindNext() override;
  SearchRequest Request() const override;

 private:
  void BuildDirection();

  QRadioButton* m_up;
  QRadioButton* m_down;
  TextPosition m_position;  ///< where the next search starts
  NotedPlace m_noted;       ///< at the last search
  std::optional<SearchRequest> m_saved;
};

}  // namespace quill
