#include "ui/ShellFixture.h"

#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <filesystem>
#include <sstream>

#include "res/Commands.h"
#include "res/ui/UiText.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"
#include "support/Paths.h"

namespace quill {
namespace {

constexpr const char* kDatabases[] = {"Keywords.db", "cKeywords.db", "KVSTCommands.db"};

}  // namespace

ShellFixture::ShellFixture() {
  std::filesystem::create_directory(m_folder.Path("bin"));
  for (const char* name : kDatabases) {
    std::filesystem::copy(std::string(QUILL_BIN_DIR "/") + name, m_folder.Path("bin"));
  }
}

ShellFixture::~ShellFixture() {
  Crash();
}

CQuillApp::Started ShellFixture::Start(const std::vector<std::string>& arguments) {
  Crash();
  const std::string programFolder = m_folder.Path("bin");
  std::vector<std::string> process = {"quill"};
  process.insert(process.end(), arguments.begin(), arguments.end());
  m_log = std::make_unique<RunLog>(programFolder, [] { return int64_t{0}; });
  m_services = std::make_unique<AppServices>(AppServices{.programFolder = programFolder,
                                                         .recoveryFolder = m_folder.Path("recovery"),
                                                         .commandLine = JoinCommandLine(process),
                                                         .language = {},
                                                         .settings = m_settings,
                                                         .marks = m_marks,
                                                         .log = *m_log,
                                                         .prompts = m_prompts,
                                                         .clock = SystemTime,
                                                         .handOver = m_handOver,
                                                         .endProcess = m_endProcess,
                                                         .showFolder = m_showFolder});
  m_app = std::make_unique<CQuillApp>(
      *m_services,
      CommandLine::Parse(arguments, [](const std::string& path) { return std::filesystem::exists(path); }),
      m_makeFeatures);
  const CQuillApp::Started started = m_app->Start();
  if (started != CQuillApp::Started::kRunning) return started;
  QApplication::setActiveWindow(&Frame());
  Pump();
  return started;
}

void ShellFixture::Quit() {
  EXPECT_TRUE(Frame().close());
  Pump();
  m_app.reset();
  Pump();
}

void ShellFixture::Crash() {
  m_app.reset();
  Pump();
}

void ShellFixture::Pump() {
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QApplication::processEvents();
}

CQuillView& ShellFixture::View() {
  return *Parts().workspace.ActiveView();
}

CQuillDoc& ShellFixture::Document() {
  return *Parts().workspace.ActiveDocument();
}

CQuillDoc& ShellFixture::Open(const std::string& name, const std::string& text) {
  CQuillDoc* document = Parts().files.Open(m_folder.Write(name, text));
  if (document == nullptr) throw std::runtime_error("cannot open " + name);
  Pump();
  return *document;
}

std::string ShellFixture::TextOf(CQuillDoc& document) {
  std::string text;
  document.Buffer().CopyRange({{}, document.Buffer().EndOfText()}, text, "|");
  return text;
}

void ShellFixture::Press(const std::string& key) {
  const QKeySequence sequence = QKeySequence::fromString(QString::fromStdString(key));
  ASSERT_EQ(sequence.count(), 1) << key;
  QWidget* focus = QApplication::focusWidget();
  QTest::keyClick(focus == nullptr ? &Frame() : focus, sequence[0].key(), sequence[0].keyboardModifiers());
  Pump();
}

void ShellFixture::Type(const std::string& text) {
  for (char c : text) QTest::keyClick(QApplication::focusWidget(), c);
  Pump();
}

QAction* ShellFixture::MenuAction(const std::string& path) {
  QList<QAction*> actions = Frame().menuBar()->actions();
  std::istringstream parts(path);
  QAction* found = nullptr;
  for (std::string part; std::getline(parts >> std::ws, part, '>');) {
    const QString wanted = QString::fromStdString(part).trimmed();
    found = nullptr;
    for (QAction* action : actions) {
      if (action->isVisible() && FromBytes(PlainLabel(ToBytes(action->text()))) == wanted) found = action;
    }
    if (found == nullptr || found->menu() == nullptr) continue;
    Q_EMIT found->menu()->aboutToShow();
    actions = found->menu()->actions();
  }
  return found;
}

bool ShellFixture::Choose(const std::string& path) {
  QAction* action = MenuAction(path);
  if (action == nullptr || !action->isEnabled()) return false;
  action->trigger();
  Pump();
  return true;
}

std::string ShellFixture::LogMessages() const {
  constexpr size_t kTimeStamp = sizeof "1970-01-01 00:00:00 " - 1;
  std::istringstream lines(m_folder.Read("bin/qil.log"));
  std::string messages;
  for (std::string line; std::getline(lines, line);) messages += line.substr(kTimeStamp) + "\n";
  return messages;
}

}  // namespace quill
