#include "intel/ui/ManualWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QHelpContentWidget>
#include <QHelpEngine>
#include <QShortcut>
#include <QSplitter>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "intel/ui/ManualBook.h"
#include "intel/ui/ManualFindBar.h"
#include "intel/ui/ManualIndexPane.h"
#include "intel/ui/ManualPage.h"
#include "intel/ui/ManualSearchPane.h"
#include "intel/ui/RoomyDelegate.h"
#include "res/Commands.h"
#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "widgets/FrameGeometry.h"

namespace quill {
namespace {

constexpr QSize kUsualSize{1080, 760};
constexpr int kToolIconSize = 16;
constexpr int kLeastSideWidth = 160;
constexpr int kNormalZoom = 100;

std::string PlaceSection() {
  return std::string(Text(StringId::kManualTitle));
}

}  // namespace

ManualWindow::ManualWindow(std::unique_ptr<ManualBook> book, const AppProfile& profile)
    : m_book(std::move(book)),
      m_profile(profile),
      m_splitter(new QSplitter(this)),
      m_side(new QTabWidget(this)),
      m_contents(m_book->Engine().contentWidget()),
      m_index(new ManualIndexPane(m_book->Engine(), this)),
      m_search(new ManualSearchPane(*m_book, this)),
      m_page(new ManualPage(*m_book, this)),
      m_findBar(new ManualFindBar(*m_page, this)) {
  setObjectName("ManualWindow");
  setWindowIcon(LoadIcon("help"));
  // The program ends with its main window.
  setAttribute(Qt::WA_QuitOnClose, false);
  m_contents->setAccessibleName(UiText(PlainLabel(Text(StringId::kManualContents))));
  m_page->setAccessibleName(UiText(StringId::kManualTitle));
  BuildSide();
  BuildPage();
  BuildToolBar();
  AddKeys();
  setCentralWidget(m_splitter);
  RestorePlace();
}

ManualWindow::~ManualWindow() {
  // Its models belong to the book.
  delete takeCentralWidget();
}

void ManualWindow::BuildSide() {
  m_contents->setFrameShape(QFrame::NoFrame);
  m_contents->setUniformRowHeights(true);
  m_contents->setItemDelegate(new RoomyDelegate(m_contents));
  m_side->setDocumentMode(true);
  m_side->addTab(m_contents, UiText(StringId::kManualContents));
  m_side->addTab(m_index, UiText(StringId::kManualIndex));
  m_side->addTab(m_search, UiText(StringId::kManualSearch));
  m_side->setMinimumWidth(kLeastSideWidth);
  connect(m_side, &QTabWidget::currentChanged, this, &ManualWindow::FocusSide);
  const auto open = [this](const QModelIndex& index) {
    const QHelpContentItem* item = m_book->Engine().contentModel()->contentItemAt(index);
    if (item != nullptr) m_page->setSource(item->url());
  };
  connect(m_contents, &QAbstractItemView::clicked, this, open);
  connect(m_contents, &QAbstractItemView::activated, this, open);
  connect(m_book->Engine().contentModel(), &QHelpContentModel::contentsCreated, this, [this] {
    m_contents->expandToDepth(0);
    OnPageChanged(m_page->source());
  });
  connect(m_index, &ManualIndexPane::Chosen, m_page, [this](const QUrl& url) { m_page->setSource(url); });
  connect(m_search, &ManualSearchPane::Chosen, m_page, [this](const QUrl& url, const QStringList& words) {
    m_page->setSource(url);
    m_page->MarkWords(words);
  });
  m_splitter->addWidget(m_side);
}

void ManualWindow::BuildPage() {
  auto* side = new QWidget(this);
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_page, 1);
  column->addWidget(m_findBar);
  m_splitter->addWidget(side);
  m_splitter->setStretchFactor(1, 1);
  m_splitter->setChildrenCollapsible(false);
  connect(m_page, &QTextBrowser::sourceChanged, this, &ManualWindow::OnPageChanged);
}

void ManualWindow::BuildToolBar() {
  auto* bar = addToolBar(UiText(StringId::kManualToolBar));
  bar->setMovable(false);
  bar->setIconSize(QSize(kToolIconSize, kToolIconSize));
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  const auto add = [this, bar](const char* icon, StringId text, QList<QKeySequence> keys, auto run) {
    auto* action = new QAction(LoadIcon(icon), UiText(text), this);
    action->setShortcuts(keys);
    action->setToolTip(UiText(text) + " (" + keys.first().toString(QKeySequence::NativeText) + ")");
    connect(action, &QAction::triggered, this, run);
    bar->addAction(action);
    return action;
  };
  QAction* back =
      add("page-back", StringId::kManualBack, {QKeySequence("Alt+Left")}, [this] { m_page->backward(); });
  QAction* forward = add("page-forward", StringId::kManualForward, {QKeySequence("Alt+Right")},
                         [this] { m_page->forward(); });
  add("page-home", StringId::kManualHome, {QKeySequence("Alt+Home")},
      [this] { m_page->setSource(ManualBook::StartPage()); });
  bar->addSeparator();
  add("find", StringId::kManualFind, {QKeySequence("Ctrl+F")}, [this] { m_findBar->Open(); });
  bar->addSeparator();
  add("zoom-out", StringId::kManualZoomOut, {QKeySequence("Ctrl+-")},
      [this] { m_page->SetZoom(m_page->Zoom() - ManualPage::kZoomStep); });
  add("zoom-in", StringId::kManualZoomIn, {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")},
      [this] { m_page->SetZoom(m_page->Zoom() + ManualPage::kZoomStep); });
  add("zoom-reset", StringId::kManualZoomReset, {QKeySequence("Ctrl+0")},
      [this] { m_page->SetZoom(kNormalZoom); });
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(m_page, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(m_page, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
}

void ManualWindow::AddKeys() {
  const auto add = [this](const char* key, auto run) {
    connect(new QShortcut(QKeySequence(key), this), &QShortcut::activated, this, run);
  };
  add("F3", [this] { m_findBar->GoOn(false); });
  add("Shift+F3", [this] { m_findBar->GoOn(true); });
  add("Esc", [this] { m_findBar->isVisible() ? m_findBar->Close() : static_cast<void>(close()); });
  add("F6", [this] { m_page->hasFocus() ? FocusSide() : m_page->setFocus(); });
}

void ManualWindow::Open(const std::string& topic) {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  // First: where a page is scrolled to depends on the width of its lines.
  show();
  m_page->setSource(m_book->TopicPage(topic));
  raise();
  activateWindow();
  m_page->setFocus();
}

void ManualWindow::OnPageChanged(const QUrl& url) {
  const bool isNamed = !m_page->documentTitle().isEmpty() && url != ManualBook::StartPage();
  setWindowTitle(isNamed ? UiText(StringId::kManualPageTitle, {m_page->documentTitle()})
                         : UiText(StringId::kManualTitle));
  const QModelIndex index = m_contents->indexOf(url);
  if (!index.isValid() || index == m_contents->currentIndex()) return;
  m_contents->setCurrentIndex(index);
  m_contents->scrollTo(index);
}

void ManualWindow::FocusSide() {
  QWidget* pane = m_side->currentWidget();
  if (pane == m_index) return m_index->FocusField();
  if (pane == m_search) return m_search->FocusField();
  m_contents->setFocus();
}

// Place

void ManualWindow::RestorePlace() {
  const auto kept = frame_geometry::Kept(m_profile, PlaceSection());
  if (frame_geometry::Restore(*this, kept.value_or(std::string()), kUsualSize))
    setWindowState(windowState() | Qt::WindowMaximized);
  const int side = std::max(ReadInt(m_profile, profile::kManualSideWidth), kLeastSideWidth);
  m_splitter->setSizes({side, std::max(width() - side, kLeastSideWidth)});
  m_page->SetZoom(ReadInt(m_profile, profile::kManualZoom));
}

void ManualWindow::SavePlace() {
  SettingsTransaction transaction(m_profile.Store());
  frame_geometry::Keep(m_profile, PlaceSection(), *this);
  WriteInt(m_profile, profile::kManualSideWidth, m_side->width());
  WriteInt(m_profile, profile::kManualZoom, m_page->Zoom());
  transaction.Commit();
}

void ManualWindow::closeEvent(QCloseEvent* event) {
  SavePlace();
  QMainWindow::closeEvent(event);
}

}  // namespace quill
