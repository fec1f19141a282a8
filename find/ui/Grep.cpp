#include "find/ui/Grep.h"

#include <QApplication>
#include <QFontDatabase>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "find/FindInFiles.h"
#include "find/ResultLine.h"
#include "find/ui/GrepResults.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "widgets/FrameGeometry.h"
#include "widgets/HistoryCombo.h"

namespace quill {
namespace {

constexpr QSize kPreferredSize{820, 360};
constexpr int kMargin = 24;  ///< between the dialog and the edges of the main window

std::string PlaceSection() {
  return std::string(Text(StringId::kGrepTitle));
}

}  // namespace

CGrep::CGrep(GrepHost host, QWidget* parent) : QDialog(parent), m_host(std::move(host)) {
  setWindowTitle(UiText(StringId::kGrepTitle));
  setSizeGripEnabled(true);
  Build();
  Connect();
  m_directory->LoadEntries();
  m_directory->SetText(m_directory->StoredText());
  m_text->LoadEntries();
  m_text->SetText(m_text->StoredText());
  UpdateButtons();
  RestorePlace();
}

void CGrep::Build() {
  const auto label = [this](StringId text, QWidget* buddy) {
    auto* made = new QLabel(UiText(text), this);
    made->setBuddy(buddy);
    return made;
  };
  m_directory = new HistoryCombo(m_host.profile, profile::kGrepDirectories, HistoryCombo::Holds::kPath, this);
  m_browse = new QPushButton(UiText(StringId::kBrowseButton), this);
  m_text = new HistoryCombo(m_host.profile, profile::kTextsToFind, HistoryCombo::Holds::kScriptText, this);
  m_search = new QPushButton(UiText(StringId::kGrepSearch), this);
  m_results = new QListView(this);
  m_model = new GrepResultModel(this);
  m_status = new QLabel(this);
  m_status->setTextFormat(Qt::PlainText);
  m_close = new QPushButton(UiText(StringId::kCloseButton), this);

  // Enter searches, whichever button has the focus.
  m_browse->setAutoDefault(false);
  m_close->setAutoDefault(false);
  m_search->setDefault(true);
  m_browse->setToolTip(UiText(StringId::kBrowseForDirectory));
  m_browse->setAccessibleName(UiText(StringId::kBrowseForDirectory));
  m_results->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  m_results->setAccessibleName(UiText(StringId::kGrepResults));
  m_results->setUniformItemSizes(true);
  m_results->setModel(m_model);
  m_results->setItemDelegate(new GrepResultDelegate(*m_model, m_results));
  m_results->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);

  auto* fields = new QGridLayout;
  fields->setColumnStretch(1, 1);
  fields->addWidget(label(StringId::kGrepDirectory, m_directory), 0, 0);
  fields->addWidget(m_directory, 0, 1);
  fields->addWidget(m_browse, 0, 2);
  fields->addWidget(label(StringId::kGrepText, m_text), 1, 0);
  fields->addWidget(m_text, 1, 1);
  fields->addWidget(m_search, 1, 2);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(m_status, 1);
  bottom->addWidget(m_close);
  auto* column = new QVBoxLayout(this);
  column->addLayout(fields);
  column->addWidget(label(StringId::kGrepResults, m_results));
  column->addWidget(m_results, 1);
  column->addLayout(bottom);
}

void CGrep::Connect() {
  for (HistoryCombo* combo : {m_directory, m_text}) {
    connect(combo, &QComboBox::editTextChanged, this, &CGrep::UpdateButtons);
  }
  connect(m_browse, &QPushButton::clicked, this, &CGrep::Browse);
  connect(m_search, &QPushButton::clicked, this, &CGrep::Search);
  connect(m_close, &QPushButton::clicked, this, &QDialog::accept);
  connect(m_results, &QListView::doubleClicked, this,
          [this](const QModelIndex& index) { OpenResult(index.row()); });
  m_results->installEventFilter(this);
}

void CGrep::Open(const std::string& directory, const std::optional<std::string>& text) {
  if (m_directory->IsEmpty()) m_directory->SetText(directory);
  if (text) m_text->SetText(*text);
  show();
  raise();
  activateWindow();
  (m_directory->IsEmpty() ? m_directory : m_text)->FocusText();
}

void CGrep::UpdateButtons() {
  m_search->setEnabled(!m_directory->IsEmpty() && !m_text->IsEmpty());
}

void CGrep::Search() {
  if (m_directory->IsEmpty() || m_text->IsEmpty()) return;
  const std::string what = m_text->Text();
  m_text->SaveText();
  m_directory->SaveText();
  m_status->clear();
  m_model->BeginSearch(what);
  repaint();
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const GrepTotals totals = FindInFiles(m_directory->Text(), what,
                                        [this](std::span<const GrepResult> found) { m_model->Add(found); });
  m_model->EndSearch();
  QApplication::restoreOverrideCursor();
  m_results->setCurrentIndex(m_model->index(0));
  ShowTotals(totals);
}

void CGrep::ShowTotals(const GrepTotals& totals) {
  m_status->setText(FromBytes(totals.StatusText()));
}

void CGrep::Browse() {
  const std::string chosen = m_host.browse(m_directory->Text());
  if (!chosen.empty()) m_directory->SetText(chosen);
}

void CGrep::OpenResult(int row) {
  if (const auto place = ParseResultLine(m_model->Entry(row))) m_host.open(place->path, place->line);
}

/// Enter on a result opens it; everywhere else it searches.
bool CGrep::eventFilter(QObject* watched, QEvent* event) {
  if (watched == m_results && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_results->currentIndex().isValid()) {
      OpenResult(m_results->currentIndex().row());
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void CGrep::done(int result) {
  SavePlace();
  if (result == Accepted) {
    m_directory->SaveText();
    m_text->SaveText();
  }
  QDialog::done(result);
  if (parentWidget() != nullptr) parentWidget()->activateWindow();
}

// Place

void CGrep::RestorePlace() {
  const auto kept = frame_geometry::Kept(m_host.profile, PlaceSection());
  if (kept) {
    frame_geometry::Restore(*this, *kept, kPreferredSize);
    return;
  }
  resize(kPreferredSize);
  if (parentWidget() == nullptr) return;
  // Over the lower part of the text, as long as the user has not put it elsewhere.
  const QRect window = parentWidget()->window()->geometry();
  const QSize size = kPreferredSize.boundedTo(window.size() - QSize(kMargin, kMargin) * 2);
  setGeometry(QRect(window.bottomRight() - QPoint(kMargin + size.width(), kMargin + size.height()), size));
}

void CGrep::SavePlace() {
  frame_geometry::Keep(m_host.profile, PlaceSection(), *this);
}

}  // namespace quill
