#include "find/ui/EditReplaceDlg.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "find/ui/SearchMarks.h"
#include "res/ui/UiText.h"
#include "text/search/SearchMatches.h"
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
  Work(CCrystalEditView& shown, TextRange block, std::function<void()> ended)
      : view(&shown),
        target(shown),
        session(target, {}, block),
        // A selection within a line is what to look for, a larger one where to look.
        prefersBlock(block.start.line != block.end.line),
        tellEnd(std::move(ended)),
        watch(shown, {[this](const TextChange* change, uint32_t hints, int32_t) {
                        if (change != nullptr) session.OnTextChanged(*change);
                        if ((hints & hint::kReset) != 0) End();
                      },
                      [this] { End(); }}) {
    noted.Note(shown);
  }
  void End() {
    isOver = true;
    tellEnd();
  }
  /// The user has not gone elsewhere since the dialog looked last.
  bool IsUserHere() const { return noted.IsIn(*view) || session.IsMatchSelected(); }
  void NoteStep() {
    noted.Note(*view);
    isFresh = false;
  }

  QPointer<CCrystalEditView> view;
  ViewTarget target;
  ReplaceSession session;
  bool prefersBlock;
  bool isFresh = true;     ///< no step was done
  bool isAdopted = false;  ///< for what was selected while the dialog was open
  bool isOver = false;
  NotedPlace noted;
  std::function<void()> tellEnd;
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
  connect(m_selection, &QRadioButton::clicked, this, [this] { PreferBlock(true); });
  connect(m_wholeFile, &QRadioButton::clicked, this, [this] { PreferBlock(false); });
  connect(m_replace, &QPushButton::clicked, this, [this] { Replace(); });
  connect(m_replaceAll, &QPushButton::clicked, this, [this] { ReplaceAll(); });
}

void CEditReplaceDlg::UpdateButtons() {
  SearchDialog::UpdateButtons();
  const CCrystalEditView* view = ActiveView();
  const bool canReplace = CanSearch() && view->CanEdit();
  m_replace->setEnabled(canReplace);
  m_replaceAll->setEnabled(canReplace);
  const Work* work = WorkIn(view);
  const bool hasBlock = work != nullptr && !work->session.Block().IsEmpty();
  m_selection->setEnabled(hasBlock);
  (hasBlock && work->prefersBlock ? m_selection : m_wholeFile)->setChecked(true);
}

void CEditReplaceDlg::Activated() {
  CCrystalEditView* view = ActiveView();
  if (view != nullptr && isVisible()) AdoptSelection(*view);
  SearchDialog::Activated();
}

void CEditReplaceDlg::BeginIn(CCrystalEditView* view, const SearchRequest&) {
  m_with->LoadEntries();
  if (isVisible()) {
    if (view != nullptr) AdoptSelection(*view);
    return;
  }
  m_with->SetText(m_with->StoredText());
  m_works.clear();
  if (view != nullptr && view->Model().HasText()) BeginWork(*view, view->Selection());
}

// Where to work

CEditReplaceDlg::Work& CEditReplaceDlg::BeginWork(CCrystalEditView& view, TextRange block) {
  const Work* before = WorkIn(&view);
  auto work = std::make_unique<Work>(view, block, [this] { UpdateButtons(); });
  work->prefersBlock |= before != nullptr && before->prefersBlock;
  std::erase_if(m_works, [&view](const auto& old) { return old->view == nullptr || old->view == &view; });
  m_works.push_back(std::move(work));
  return *m_works.back();
}

void CEditReplaceDlg::PreferBlock(bool prefers) {
  if (Work* work = WorkIn(ActiveView())) work->prefersBlock = prefers;
}

CEditReplaceDlg::Work* CEditReplaceDlg::WorkIn(const CCrystalEditView* view) const {
  for (const auto& work : m_works) {
    if (view != nullptr && work->view == view) return work->isOver ? nullptr : work.get();
  }
  return nullptr;
}

bool CEditReplaceDlg::IsMatchSelected(const CCrystalEditView& view) const {
  const SearchRequest search = Request();
  return IsMatch(*view.Buffer(), TextSearch(search.what, search.flags), view.Selection());
}

void CEditReplaceDlg::AdoptSelection(CCrystalEditView& view) {
  if (!view.Model().HasText() || view.Selection().IsEmpty()) return;
  const Work* work = WorkIn(&view);
  if (IsMatchSelected(view) || (work != nullptr && work->IsUserHere())) return;
  BeginWork(view, view.Selection()).isAdopted = true;
}

CEditReplaceDlg::Work* CEditReplaceDlg::WorkFor(Step step) {
  if (!CanSearch()) return nullptr;
  CCrystalEditView& view = *ActiveView();
  Work* work = WorkIn(&view);
  if (work == nullptr) {
    work = &BeginWork(view, {});
    UpdateButtons();
  }
  if (work->session.IsMatchSelected()) return work;
  // Where the user went, or a place that fits already, is where to go on from; Replace All wants them all.
  const TextRange selection = view.Selection();
  const bool hasMoved = !work->noted.IsIn(view) || (work->isFresh && work->isAdopted);
  const bool isWithinLine = selection.start.line == selection.end.line;
  if (step == Step::kReplaceAll) {
    work->session.StartFrom({});
  } else if (isWithinLine && (hasMoved || (work->isFresh && IsMatchSelected(view)))) {
    work->session.StartFrom(step == Step::kFindNext ? selection.end : selection.start);
  }
  return work;
}

bool CEditReplaceDlg::InBlock() const {
  return m_selection->isEnabled() && m_selection->isChecked();
}

// The buttons

ReplaceRequest CEditReplaceDlg::ReplacementRequest() const {
  const SearchRequest search = Request();
  return {search.what, m_with->Text(), search.flags, InBlock()};
}

void CEditReplaceDlg::FindNext() {
  Work* work = WorkFor(Step::kFindNext);
  if (work != nullptr) Finish(*work, work->session.FindNext(ReplacementRequest()));
}

void CEditReplaceDlg::Replace() {
  Work* work = WorkFor(Step::kReplace);
  if (work != nullptr) Finish(*work, work->session.Replace(ReplacementRequest()));
}

void CEditReplaceDlg::Finish(Work& work, bool found) {
  work.NoteStep();
  if (found) {
    ShowFound(*work.view, Request());
  } else {
    TellNotFound(Request());
  }
}

void CEditReplaceDlg::ReplaceAll() {
  Work* work = WorkFor(Step::kReplaceAll);
  if (work == nullptr) return;
  QApplication::setOverrideCursor(Qt::WaitCursor);
  work->session.ReplaceAll(ReplacementRequest());
  QApplication::restoreOverrideCursor();
  work->NoteStep();
  KeepSelectionClear(*this, *work->view);
}

void CEditReplaceDlg::SaveMore() {
  m_with->SaveText();
}

void CEditReplaceDlg::done(int result) {
  CCrystalEditView* view = ActiveView();
  if (view != nullptr && CanSearch()) Marks().Of(*view).SetLastSearch(Request());
  const Work* work = WorkIn(view);
  if (work != nullptr && InBlock() && work->IsUserHere()) {
    const TextRange block = work->session.Block();
    if (view->Selection() != block) view->SetSelection(block.start, block.end);
  }
  m_works.clear();
  Save();
  SearchDialog::done(result);
}

}  // namespace quill
