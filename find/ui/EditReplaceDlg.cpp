#include "find/ui/EditReplaceDlg.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "find/ui/SearchMarks.h"
#include "res/ui/UiText.h"
#include "text/ui/CrystalEditView.h"
#include "text/ui/TextWatch.h"
#include "widgets/CodePageText.h"
#include "widgets/HistoryCombo.h"

namespace quill {
namespace {

class ViewTarget : public ReplaceTarget {
 public:
  explicit ViewTarget(CCrystalEditView& view) : m_view(view) {}

  CCrystalTextBuffer& Buffer() override { return *m_view.Buffer(); }
  EditSource Source() override { return &m_view.Model(); }
  TextRange Selection() const override { return m_view.Selection(); }
  void SelectFound(TextPosition at, int32_t length) override { m_view.SelectFound(at, length); }
  bool ReplaceSelectedText(std::string_view text) override { return m_view.ReplaceSelectedText(text); }
  void PlaceCaret(TextPosition at) override { m_view.SetCaretPos(at); }

 private:
  CCrystalEditView& m_view;
};

}  // namespace

/// A replace session in one view. It ends with the view's text.
struct CEditReplaceDlg::Work {
  Work(CCrystalEditView& shown, TextPosition start, TextRange block)
      : view(&shown),
        target(shown),
        session(target, start, block),
        watch(shown, {[this](const TextChange* change, uint32_t hints, int32_t) {
                        if (change != nullptr) session.OnTextChanged(*change);
                        if ((hints & hint::kReset) != 0) isOver = true;
                      },
                      [this] { isOver = true; }}) {}

  QPointer<CCrystalEditView> view;
  ViewTarget target;
  ReplaceSession session;
  bool isOver = false;
  TextWatch watch;
};

CEditReplaceDlg::CEditReplaceDlg(FindHost host, QWidget* parent)
    : SearchDialog(std::move(host), StringId::kReplaceTitle,
                   {profile::kReplaceMatchCase, profile::kReplaceWholeWord, profile::kReplaceFindWhat},
                   parent) {
  BuildControls();
  UpdateButtons();
}

CEditReplaceDlg::~CEditReplaceDlg() = default;

void CEditReplaceDlg::BuildControls() {
  const ProfileHistory history{profile::kReplaceWith.section, profile::kReplaceWith.name};
  m_with = new HistoryCombo(Profile(), history, HistoryCombo::Holds::kScriptText, this);
  auto* label = new QLabel(UiText(StringId::kReplaceWith), this);
  label->setBuddy(m_with);
  Fields().addWidget(label, 1, 0);
  Fields().addWidget(m_with, 1, 1);

  auto* scope = new QGroupBox(UiText(StringId::kReplaceScope), this);
  auto* row = new QHBoxLayout(scope);
  m_selection = new QRadioButton(UiText(StringId::kScopeSelection), scope);
  m_wholeFile = new QRadioButton(UiText(StringId::kScopeWholeFile), scope);
  m_wholeFile->setChecked(true);
  row->addWidget(m_selection);
  row->addWidget(m_wholeFile);
  OptionRow().addWidget(scope);

  m_replace = AddButton(StringId::kReplaceButton);
  m_replaceAll = AddButton(StringId::kReplaceAllButton);
  OrderTabs({m_with}, {m_selection, m_wholeFile}, {m_replace, m_replaceAll});
  connect(m_replace, &QPushButton::clicked, this, [this] { Replace(); });
  connect(m_replaceAll, &QPushButton::clicked, this, [this] { ReplaceAll(); });
}

void CEditReplaceDlg::UpdateButtons() {
  SearchDialog::UpdateButtons();
  const CCrystalEditView* view = ActiveView();
  const bool canReplace = CanSearch() && view->CanEdit();
  m_replace->setEnabled(canReplace);
  m_replaceAll->setEnabled(canReplace);
  const bool hasBlock =
      m_work != nullptr && !m_work->isOver && m_work->view == view && !m_work->session.Block().IsEmpty();
  m_selection->setEnabled(hasBlock);
  if (!hasBlock) m_wholeFile->setChecked(true);
}

void CEditReplaceDlg::BeginIn(CCrystalEditView* view, const SearchRequest&) {
  m_with->LoadEntries();
  m_with->SetText(m_with->StoredText());
  m_work.reset();
  if (view == nullptr || !view->Model().HasText()) return;
  const TextRange selection = view->Selection();
  BeginWork(*view, selection.start, selection);
  // A selection within a line is what to look for, a larger one where to look.
  const bool inBlock = selection.start.line != selection.end.line;
  (inBlock ? m_selection : m_wholeFile)->setChecked(true);
}

void CEditReplaceDlg::BeginWork(CCrystalEditView& view, TextPosition start, TextRange block) {
  m_work = std::make_unique<Work>(view, start, block);
  NoteCaret(view);
}

CEditReplaceDlg::Work* CEditReplaceDlg::WorkOfActiveView(bool withSelected) {
  CCrystalEditView* view = ActiveView();
  if (!CanSearch()) return nullptr;
  const bool sameText = m_work != nullptr && !m_work->isOver && m_work->view == view;
  if (!sameText || HasCaretMoved(*view)) {
    const TextRange selection = view->Selection();
    BeginWork(*view, withSelected ? selection.start : selection.end,
              sameText ? m_work->session.Block() : TextRange{});
    UpdateButtons();
  }
  return m_work.get();
}

bool CEditReplaceDlg::InBlock() const {
  return m_selection->isEnabled() && m_selection->isChecked();
}

ReplaceRequest CEditReplaceDlg::ReplacementRequest() const {
  const SearchRequest search = Request();
  return {search.what, m_with->Text(), search.flags, InBlock()};
}

void CEditReplaceDlg::FindNext() {
  Work* work = WorkOfActiveView(false);
  if (work != nullptr) Finish(*work, work->session.FindNext(ReplacementRequest()));
}

void CEditReplaceDlg::Replace() {
  Work* work = WorkOfActiveView(true);
  if (work != nullptr) Finish(*work, work->session.Replace(ReplacementRequest()));
}

void CEditReplaceDlg::Finish(Work& work, bool found) {
  NoteCaret(*work.view);
  if (found) {
    ShowFound(*work.view, Request());
  } else {
    TellNotFound(Request());
  }
}

void CEditReplaceDlg::ReplaceAll() {
  Work* work = WorkOfActiveView(true);
  if (work == nullptr) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  work->session.ReplaceAll(ReplacementRequest());
  QApplication::restoreOverrideCursor();
  NoteCaret(*work->view);
  KeepSelectionClear(*this, *work->view);
}

void CEditReplaceDlg::SaveMore() {
  m_with->SaveText();
}

void CEditReplaceDlg::done(int result) {
  CCrystalEditView* view = ActiveView();
  if (view != nullptr && CanSearch()) Marks().Of(*view).SetLastSearch(Request());
  if (InBlock() && m_work != nullptr && view != nullptr && m_work->view == view) {
    const TextRange block = m_work->session.Block();
    view->SetSelection(block.start, block.end);
  }
  m_work.reset();
  Save();
  SearchDialog::done(result);
}

}  // namespace quill
