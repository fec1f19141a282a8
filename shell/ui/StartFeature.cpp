#include "shell/ui/StartFeature.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <filesystem>

#include "res/ui/IconSet.h"
#include "res/ui/UiText.h"
#include "shell/RecentFiles.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Workspace.h"

namespace quill {

using enum CommandId;

StartFeature::StartFeature(const Needs& needs) : m(needs) {
  connect(&m.active, &ActiveView::Changed, this, &StartFeature::UpdateSoon);
  m.workspace.installEventFilter(this);
}

StartFeature::~StartFeature() {
  delete m_page;
}

void StartFeature::RegisterCommands(CommandRouter& router) {
  m_router = &router;
}

bool StartFeature::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::PaletteChange) UpdateSoon();
  if (event->type() == QEvent::Resize && m_page != nullptr) m_page->setGeometry(m.workspace.rect());
  return QObject::eventFilter(watched, event);
}

void StartFeature::UpdateSoon() {
  QTimer::singleShot(0, this, [this] { Update(); });
}

void StartFeature::Update() {
  if (m_router == nullptr) return;
  if (!m.workspace.Frames().empty()) {
    if (m_page != nullptr) m_page->deleteLater();
    m_page = nullptr;
    return;
  }
  const bool wantsFocus = m_page == nullptr || m_page->isAncestorOf(QApplication::focusWidget());
  if (m_page == nullptr) m_page = new StartPage(&m.workspace);
  m_page->Show(
      {{UiText(StringId::kStartBegin), BeginRows()}, {UiText(StringId::kStartRecent), RecentRows()}});
  m_page->setGeometry(m.workspace.rect());
  m_page->show();
  m_page->raise();
  if (wantsFocus) m_page->FocusFirst();
}

StartPage::Row StartFeature::CommandRow(CommandId id) {
  const Command& command = *FindCommand(id);
  return {LoadIcon(command.icon), UiText(PlainLabel(command.menuText)),
          m_router->Action(id)->shortcut().toString(QKeySequence::NativeText), [this, id] {
            m_router->Execute(id);
            // A recovery may have been declined, a file may not have opened.
            UpdateSoon();
          }};
}

std::vector<StartPage::Row> StartFeature::BeginRows() {
  std::vector<StartPage::Row> rows = {CommandRow(kFileNew), CommandRow(kFileOpen)};
  if (m.files.HasRecoverable()) rows.push_back(CommandRow(kFileRecover));
  m_router->Refresh(kHelpSample);
  if (m_router->Action(kHelpSample)->isEnabled()) rows.push_back(CommandRow(kHelpSample));
  return rows;
}

std::vector<StartPage::Row> StartFeature::RecentRows() {
  std::vector<StartPage::Row> rows;
  for (const std::string& path : m.recent.Paths()) {
    StartPage::Row row = CommandRow(kRecentFileFirst + static_cast<int>(rows.size()));
    const std::filesystem::path file(path);
    row.icon = LoadIcon("document-script");
    row.text = FromBytes(file.filename().string());
    row.remark = FromBytes(file.parent_path().string());
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace quill
