#include "app/MainFrame.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <cstdlib>
#include <ranges>

#include "res/Strings.h"
#include "res/ui/UiText.h"
#include "settings/SealedValue.h"
#include "settings/Settings.h"
#include "shell/CommandLine.h"
#include "shell/FrameTitle.h"
#include "shell/KeyBindings.h"
#include "shell/OpenProject.h"
#include "shell/RecentFiles.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/KeypadKeys.h"
#include "shell/ui/Menus.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/TimerService.h"
#include "shell/ui/ToolBarImages.h"
#include "shell/ui/ViewContextMenu.h"
#include "shell/ui/ViewSettingsControl.h"
#include "shell/ui/ViewStatus.h"
#include "shell/ui/Workspace.h"
#include "widgets/FrameGeometry.h"
#include "widgets/ListFocusRing.h"

namespace quill {
namespace {

constexpr int kMillisecondsAMinute = 60000;
constexpr int kBarsSeen = 100;  ///< milliseconds after which restored bars stand on the screen
constexpr const char* kRestoringBars = "/layout.attempt";

DocumentServices ServicesOfDocuments(AppServices& services) {
  DocumentServices result;
  result.marks = &services.marks;
  result.log = &services.log;
  result.recoveryFolder = services.recoveryFolder;
  return result;
}

}  // namespace

CMainFrame::CMainFrame(AppServices& services, FeatureFactory makeFeatures)
    : m_services(services), m_makeFeatures(std::move(makeFeatures)) {
  setObjectName("CMainFrame");
}

CMainFrame::~CMainFrame() {
  if (m_parts != nullptr) m_parts->active.disconnect(this);  // no title is wanted any more
  m_features.Clear();
  // The views go before the documents whose text they show.
  delete takeCentralWidget();
}

// Creation

CMainFrame::Created CMainFrame::Create() {
  m_services.log.Line(Text(StringId::kLogCreatingFrame));
  BuildParts();
  LoadToolBarImages(m_services.programFolder, m_parts->router);
  m_services.log.Line(std::string(Text(StringId::kLogVersion)).append(Text(StringId::kVersionText)));
  StartTimers();
  BuildBars();
  Connect();
  if (const Created loaded = LoadDatabases(); loaded != Created::kYes) return loaded;
  for (const auto& feature : m_features.list) feature->RegisterCommands(m_parts->router);
  UpdateFrameTitle();
  m_services.log.Line(Text(StringId::kLogFrameCreated));
  return Created::kYes;
}

void CMainFrame::BuildParts() {
  auto* router = new CommandRouter(*this);
  auto* workspace =
      new Workspace([this] { return new CQuillView(m_keywords, m_commands); }, m_services.Profile(), this);
  setCentralWidget(workspace);
  auto* documents = new Documents(ServicesOfDocuments(m_services), this);
  auto* files = new FileOperations(m_services, *documents, *workspace, this);
  m_recent = std::make_unique<RecentFiles>(m_services.Profile());
  m_recent->Load();
  auto* viewSettings = new ViewSettingsControl(m_services, *workspace, this);
  auto* status = new StatusBar(this);
  setStatusBar(status);
  auto* timers = new TimerService(this);
  m_bars = std::make_unique<DockBars>(*this, *router);
  auto* active = new ActiveView(*workspace, this);
  new ViewStatus(*active, *status, *router, this);
  new KeypadKeys(*this, *router, this);
  new ListFocusRing(this);
  m_parts = std::make_unique<ShellParts>(ShellParts{m_services, *this, *router, *workspace, *active,
                                                    *documents, *files, *viewSettings, *m_bars, *m_recent,
                                                    *status, *timers, m_commands});
  m_features = m_makeFeatures(*m_parts);
}

void CMainFrame::BuildBars() {
  BuildMenuBar(*menuBar(), m_parts->router);
  m_bars->AddToolBars();
  for (const auto& feature : m_features.list) feature->AddBars(*m_bars);
  setAcceptDrops(true);
}

void CMainFrame::Connect() {
  connect(&m_parts->active, &ActiveView::Changed, this, &CMainFrame::OnActiveViewChanged);
  connect(&m_parts->documents, &Documents::Created, this, &CMainFrame::OnDocumentCreated);
  connect(&m_parts->workspace, &Workspace::WindowAdded, this, [this](CChildFrame* frame) {
    AttachContextMenu(frame->View(), m_parts->router);
    // After the event that gave the focus: a question within it would take the focus away again.
    connect(&frame->View(), &CCrystalTextView::GotFocus, frame, [this, frame] {
      QTimer::singleShot(0, frame, [this, frame] {
        if (!frame->IsClosed()) m_parts->files.CheckOnDisk(*frame);
      });
    });
  });
}

void CMainFrame::StartTimers() {
  TimerService& timers = m_parts->timers;
  timers.SetAction(timer_id::kDeferredStart, [this] { StartDeferred(); });
  timers.SetAction(timer_id::kAutoSave, [this] { m_parts->files.BackUpActiveDocument(); });
  timers.Start(timer_id::kWatchRefresh, ReadInt(m_services.settings, settings::kWatchUpdate));
  timers.Start(timer_id::kAutoSave,
               ReadInt(m_services.settings, settings::kAutoSaveTimer) * kMillisecondsAMinute);
}

CMainFrame::Created CMainFrame::LoadDatabases() {
  m_services.log.Line(Text(StringId::kLogLoadingKeywords));
  DatabaseResult loaded = m_keywords.LoadKeywordSets(m_services.programFolder);
  if (loaded) {
    m_services.log.Line(Text(StringId::kLogLoadingCommands));
    try {
      loaded = m_commands.LoadCommandDatabase(m_services.programFolder);
    } catch (const std::invalid_argument& error) {
      loaded = {DatabaseResult::State::kUnreadable, error.what()};
    }
  }
  if (loaded) return Created::kYes;
  m_services.prompts.Tell(loaded.message, {}, DocumentPrompt::Icon::kNone);
  return loaded.state == DatabaseResult::State::kMissing ? Created::kDatabaseMissing : Created::kFailed;
}

bool CMainFrame::RestoreLayout() {
  const AppProfile profile = m_services.Profile();
  const bool maximised =
      frame_geometry::Restore(*this, ReadBinary(profile, profile::kMainWndPos).value_or(std::string()));
  RestoreBars();
  return maximised;
}

/// A start that died here, until the bars have been seen, is the last one to try the layout.
void CMainFrame::RestoreBars() {
  const auto layout =
      sealed_value::Open(ReadBinary(m_services.Profile(), profile::kBarPositions).value_or(std::string()));
  if (!layout) return;
  m_restoringBars.emplace(m_services.recoveryFolder + kRestoringBars);
  QTimer::singleShot(kBarsSeen, this, [this] { m_restoringBars.reset(); });
  if (!m_restoringBars->FailedBefore()) {
    m_bars->RestoreLayout(QByteArray::fromStdString(*layout));
    return;
  }
  m_services.log.Line(Text(StringId::kLayoutLeftOut));
  m_parts->statusBar.Tell(UiText(StringId::kLayoutLeftOut));
}

void CMainFrame::LoadKeys() {
  KeyBindings bindings;
  if (const auto bytes = ReadBinary(m_services.Profile(), profile::kKeyboard)) {
    if (auto stored = KeyBindings::FromBytes(*bytes)) {
      bindings = std::move(*stored);
    } else {
      m_services.prompts.Tell(std::string(Text(StringId::kUserKeysFailed)));
    }
  }
  m_parts->router.SetKeys(bindings);
}

void CMainFrame::StartDeferred() {
  m_services.log.Line(Text(StringId::kLogStartingDebugger));
  if (DropProgramName(m_services.commandLine).empty())
    m_services.log.Line(Text(StringId::kLogLoadingProject));
  m_services.log.Line(Text(StringId::kLogLoadingPlugins));
  for (const auto& feature : m_features.list) feature->Started();
  m_parts->timers.Kill(timer_id::kDeferredStart);
}

// While running

void CMainFrame::OnDocumentCreated(CQuillDoc* document) {
  connect(document, &CQuillDoc::TitleChanged, this, &CMainFrame::UpdateFrameTitle);
  connect(document, &CQuillDoc::PathSet, this, [this](const std::string& path) { m_recent->Add(path); });
}

void CMainFrame::OnActiveViewChanged() {
  UpdateFrameTitle();
  for (const auto& feature : m_features.list) feature->ActiveViewChanged();
  if (CQuillView* view = m_parts->active.View()) m_parts->viewSettings.ApplyTo(*view);
}

void CMainFrame::UpdateFrameTitle() {
  const CQuillDoc* document = m_parts->active.Document();
  m_title = FromBytes(FrameTitle(m_features.project == nullptr ? std::string() : m_features.project->Name(),
                                 document == nullptr ? std::string() : document->File().Path(),
                                 ReadFlag(m_services.settings, settings::kShowFullPathTitle)));
  setWindowTitle(m_title);
}

void CMainFrame::ApplySettingsToViews() {
  m_parts->viewSettings.ApplyToAll();
  for (const auto& feature : m_features.list) feature->SettingsApplied();
  m_parts->timers.Start(timer_id::kWatchRefresh, ReadInt(m_services.settings, settings::kWatchUpdate));
  UpdateFrameTitle();
  m_parts->router.RefreshAll();
}

// Events

bool CMainFrame::event(QEvent* event) {
  // Comes up from the widget with the focus before the key looks for its command.
  if (event->type() == QEvent::ShortcutOverride) {
    m_parts->router.RefreshFor(*static_cast<QKeyEvent*>(event));
  }
  if (event->type() == QEvent::KeyPress) {
    // Nobody else wanted the key.
    const QString whyNot = m_parts->router.WhyNot(*static_cast<QKeyEvent*>(event));
    if (!whyNot.isEmpty()) m_parts->statusBar.Tell(whyNot);
  }
  return QMainWindow::event(event);
}

/// A maximised child window would add its title to this window's.
void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (m_parts == nullptr) return;
  if (event->type() == QEvent::WindowTitleChange && windowTitle() != m_title) setWindowTitle(m_title);
  if (event->type() == QEvent::PaletteChange) m_parts->viewSettings.ApplyToAll();
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile()) m_parts->files.Open(ToBytes(url.toLocalFile()));
  }
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  if (!std::ranges::all_of(m_features.list, [](const auto& feature) { return feature->MayClose(); })) {
    event->ignore();
    return;
  }
  ShutDown();
  if (m_parts->files.CloseAll()) {
    event->accept();
    return;
  }
  event->ignore();
  m_parts->timers.Start(timer_id::kWatchRefresh, ReadInt(m_services.settings, settings::kWatchUpdate));
}

void CMainFrame::ShutDown() {
  for (const auto& feature : m_features.list | std::views::reverse) feature->AboutToClose();
  m_parts->timers.Kill(timer_id::kWatchRefresh);
  AppProfile profile = m_services.Profile();
  SettingsTransaction transaction(m_services.settings);
  WriteBinary(profile, profile::kBarPositions, sealed_value::Seal(m_bars->SaveLayout().toStdString()));
  WriteBinary(profile, profile::kMainWndPos, frame_geometry::Save(*this));
  transaction.Commit();
  const bool runsOn = std::any_of(m_features.list.begin(), m_features.list.end(),
                                  [](const auto& feature) { return feature->CannotBeStopped(); });
  if (runsOn && m_services.endProcess) m_services.endProcess(EXIT_SUCCESS);
}

}  // namespace quill
