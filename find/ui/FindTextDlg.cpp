#include "find/ui/FindTextDlg.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QRadioButton>

#include "res/ui/UiText.h"
#include "text/ui/CrystalEditView.h"

namespace quill {

CFindTextDlg::CFindTextDlg(FindHost host, QWidget* parent)
    : SearchDialog(std::move(host), StringId::kFindTitle,
                   {profile::kFindMatchCase, profile::kFindWholeWord, profile::kFindWhat}, parent) {
  BuildDirection();
}

void CFindTextDlg::BuildDirection() {
  auto* direction = new QGroupBox(UiText(StringId::kDirection), this);
  auto* row = new QHBoxLayout(direction);
  m_up = new QRadioButton(UiText(StringId::kDirectionUp), direction);
  m_down = new QRadioButton(UiText(StringId::kDirectionDown), direction);
  m_down->setChecked(true);
  row->addWidget(m_up);
  row->addWidget(m_down);
  OptionRow().addWidget(direction);
  OrderTabs({}, {m_up, m_down}, {});
}

void CFindTextDlg::BeginIn(CCrystalEditView* view, const SearchRequest& search) {
  const bool up = (search.flags & search_flag::kUpwards) != 0;
  (up ? m_up : m_down)->setChecked(true);
  m_position = view == nullptr ? TextPosition{} : view->Selection().end;
  if (view != nullptr) m_noted.Note(*view);
}

SearchRequest CFindTextDlg::Request() const {
  SearchRequest request = SearchDialog::Request();
  if (m_up->isChecked()) request.flags |= search_flag::kUpwards;
  return request;
}

void CFindTextDlg::FindNext() {
  CCrystalEditView* view = ActiveView();
  if (!CanSearch()) return;
  if (!m_noted.IsIn(*view)) m_position = view->Selection().end;
  const SearchRequest search = Request();
  TextPosition found;
  const bool wasFound = FindInText(*view->Buffer(), search.what, m_position, search.flags, true, found);
  if (wasFound) {
    view->SelectFound(found, static_cast<int32_t>(search.what.size()));
    ShowFound(*view, search);
    if (m_saved != search) Save();
    m_saved = search;
  }
  m_position = wasFound ? view->CaretPos() : TextPosition{};
  m_noted.Note(*view);
  if (!wasFound) TellNotFound(search);
}

}  // namespace quill
