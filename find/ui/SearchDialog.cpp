#include "find/ui/SearchDialog.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "find/ui/SearchMarks.h"
#include "res/ui/UiText.h"
#include "text/search/DialogPlace.h"
#include "text/search/FindOpening.h"
#include "text/ui/CrystalEditView.h"
#include "widgets/CodePageText.h"
#include "widgets/HistoryCombo.h"

namespace quill {
namespace {

constexpr int kColumnGap = 12;

ScreenRectangle ToPlain(const QRect& r) {
  return {r.x(), r.y(), r.width(), r.height()};
}

/// The part of the selection that is on the screen, with a line above and below it.
QRect SelectionOnScreen(const CCrystalTextView& view) {
  const TextRange selection = view.Selection();
  const QRect text(view.PointOf(selection.start),
                   view.PointOf(selection.end) + QPoint(0, view.LineHeight() - 1));
  const QRect shown = text.normalized().adjusted(0, -view.LineHeight(), 0, view.LineHeight());
  return shown.intersected(view.viewport()->rect()).translated(view.viewport()->mapToGlobal(QPoint()));
}

}  // namespace

void KeepSelectionClear(QWidget& window, const CCrystalTextView& view) {
  const QRect keepClear = SelectionOnScreen(view);
  if (!window.isVisible() || keepClear.isEmpty()) return;
  const QRect frame = window.frameGeometry();
  const ScreenRectangle place =
      PlaceAside(ToPlain(frame), ToPlain(keepClear), ToPlain(window.screen()->availableGeometry()));
  const QPoint corner(place.x, place.y);
  if (corner != frame.topLeft()) window.move(corner);
}

void NotedPlace::Note(const CCrystalTextView& view) {
  m_view = &view;
  m_caret = view.CaretPos();
  m_selection = view.Selection();
}

bool NotedPlace::IsIn(const CCrystalTextView& view) const {
  return m_view == &view && m_caret == view.CaretPos() && m_selection == view.Selection();
}

SearchDialog::SearchDialog(FindHost host, StringId title, const Stored& stored, QWidget* parent)
    : QDialog(parent), m_host(std::move(host)), m_stored(stored) {
  setWindowTitle(UiText(title));
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  Build();
  UpdateButtons();
}

void SearchDialog::Build() {
  m_fields = new QGridLayout;
  m_optionRow = new QHBoxLayout;
  m_buttons = new QVBoxLayout;
  auto* whole = new QHBoxLayout(this);
  auto* left = new QVBoxLayout;
  left->addLayout(m_fields);
  left->addLayout(m_optionRow);
  left->addStretch();
  whole->addLayout(left, 1);
  whole->addSpacing(kColumnGap);
  whole->addLayout(m_buttons);
  whole->setSizeConstraint(QLayout::SetFixedSize);

  const ProfileHistory history{m_stored.what.section, m_stored.what.name};
  m_what = new HistoryCombo(m_host.profile, history, HistoryCombo::Holds::kScriptText, this);
  auto* label = new QLabel(UiText(StringId::kFindWhat), this);
  label->setBuddy(m_what);
  m_fields->addWidget(label, 0, 0);
  m_fields->addWidget(m_what, 0, 1);
  m_fields->setColumnStretch(1, 1);

  auto* comparison = new QVBoxLayout;
  m_matchCase = new QCheckBox(UiText(StringId::kMatchCase), this);
  m_wholeWord = new QCheckBox(UiText(StringId::kWholeWord), this);
  comparison->addWidget(m_wholeWord);
  comparison->addWidget(m_matchCase);
  comparison->addStretch();
  m_optionRow->addLayout(comparison, 1);

  m_close = new QPushButton(UiText(StringId::kCloseButton), this);
  m_buttons->addWidget(m_close);
  m_buttons->addStretch();
  m_find = AddButton(StringId::kFindNextButton);
  m_find->setDefault(true);
  connect(m_find, &QPushButton::clicked, this, [this] { FindNext(); });
  connect(m_close, &QPushButton::clicked, this, &QDialog::close);
  connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, m_find, &QPushButton::click);
  connect(m_what, &QComboBox::editTextChanged, this, [this] {
    UpdateButtons();
    if (m_what->IsEmpty()) Q_EMIT SearchEmptied();
  });
}

QPushButton* SearchDialog::AddButton(StringId text) {
  auto* button = new QPushButton(UiText(text), this);
  m_buttons->insertWidget(m_buttons->count() - 2, button);
  return button;
}

void SearchDialog::OrderTabs(const QList<QWidget*>& fields, const QList<QWidget*>& options,
                             const QList<QWidget*>& buttons) {
  QList<QWidget*> all = {m_what};
  all << fields << m_wholeWord << m_matchCase << options << m_find << buttons << m_close;
  for (qsizetype i = 1; i < all.size(); ++i) setTabOrder(all[i - 1], all[i]);
}

SearchRequest SearchDialog::RequestToBeginWith(CCrystalEditView* view) const {
  SearchRequest stored{m_what->StoredText(), 0};
  if (ReadInt(Profile(), m_stored.matchCase) != 0) stored.flags |= search_flag::kMatchCase;
  if (ReadInt(Profile(), m_stored.wholeWord) != 0) stored.flags |= search_flag::kWholeWord;
  if (view == nullptr || view->Buffer() == nullptr) return stored;
  std::optional<SearchRequest> last = Marks().Of(*view).LastSearch();
  if (isVisible() && m_shownFor == view && !m_what->IsEmpty()) last = Request();
  return SearchToBeginWith(last, stored, SelectedWithinLine(*view->Buffer(), view->Selection()));
}

void SearchDialog::Present() {
  CCrystalEditView* view = ActiveView();
  m_what->LoadEntries();
  const SearchRequest search = RequestToBeginWith(view);
  m_what->SetText(search.what);
  m_matchCase->setChecked((search.flags & search_flag::kMatchCase) != 0);
  m_wholeWord->setChecked((search.flags & search_flag::kWholeWord) != 0);
  BeginIn(view, search);
  m_shownFor = view;
  UpdateButtons();
  show();
  raise();
  activateWindow();
  m_what->FocusText();
  if (view != nullptr && view->Model().HasSelection()) KeepSelectionClear(*this, *view);
}

void SearchDialog::done(int result) {
  QDialog::done(result);
  CCrystalEditView* view = ActiveView();
  if (view == nullptr) return;
  view->window()->activateWindow();
  view->setFocus();
}

void SearchDialog::UpdateButtons() {
  m_find->setEnabled(CanSearch());
}

bool SearchDialog::CanSearch() const {
  const CCrystalEditView* view = ActiveView();
  return !m_what->IsEmpty() && view != nullptr && view->Model().HasText();
}

SearchRequest SearchDialog::Request() const {
  SearchRequest request{m_what->Text(), 0};
  if (m_matchCase->isChecked()) request.flags |= search_flag::kMatchCase;
  if (m_wholeWord->isChecked()) request.flags |= search_flag::kWholeWord;
  return request;
}

void SearchDialog::Save() {
  AppProfile profile = m_host.profile;
  SettingsTransaction transaction(profile.Store());
  WriteInt(profile, m_stored.matchCase, m_matchCase->isChecked() ? 1 : 0);
  WriteInt(profile, m_stored.wholeWord, m_wholeWord->isChecked() ? 1 : 0);
  m_what->SaveText();
  SaveMore();
  transaction.Commit();
}

void SearchDialog::ShowFound(CCrystalEditView& view, const SearchRequest& search) {
  Marks().Of(view).SetLastSearch(search);
  Marks().Of(view).Show(search);
  KeepSelectionClear(*this, view);
}

void SearchDialog::TellNotFound(const SearchRequest& search) {
  if (CCrystalEditView* view = ActiveView()) Marks().Of(*view).Hide();
  m_host.tell(UiText(StringId::kCannotFind, {FromCodePage(search.what)}));
  activateWindow();
  m_what->FocusText();
}

bool SearchDialog::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Activated();
  return QDialog::event(event);
}

}  // namespace quill
