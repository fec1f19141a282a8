#include "intel/ui/ActiveScript.h"

#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "text/ui/TextWatch.h"

namespace quill {

ActiveScript::ActiveScript(SettingsStore& settings, ActiveView& active, const Documents& documents)
    : m_settings(settings),
      m_active(active),
      m_documents(documents),
      m_shown(std::make_shared<ScriptFacts>()),
      m_latest(m_shown),
      m_followsText(ReadFlag(settings, settings::kAutoRefreshAtStart)) {
  m_autoRefresh.setSingleShot(true);
  connect(&m_autoRefresh, &QTimer::timeout, this, &ActiveScript::OnTimer);
  connect(&active, &ActiveView::Changed, this, &ActiveScript::Follow);
}

ActiveScript::~ActiveScript() = default;

void ActiveScript::SettingsApplied() {
  m_followsText = ReadFlag(m_settings, settings::kAutoRefresh);
}

void ActiveScript::Follow() {
  m_watch.reset();
  m_autoRefresh.stop();
  if (m_active.View() == nullptr) return;
  m_watch = std::make_unique<TextWatch>(
      *m_active.View(), TextWatch::Callbacks{[this](const TextChange* change, uint32_t hints, int32_t) {
                                               if (change != nullptr || (hints & hint::kReset) != 0)
                                                 OnTextChanged();
                                             },
                                             [this] { OnTextChanged(); }});
  Refresh();
}

void ActiveScript::OnTextChanged() {
  m_latest.reset();
  m_sinceChange.start();
  // Not restarted: a replacement makes thousands of changes, a clock is read faster than a timer is set.
  if (!m_autoRefresh.isActive()) m_autoRefresh.start(kAutoRefreshDelay);
}

void ActiveScript::OnTimer() {
  const qint64 left = kAutoRefreshDelay - m_sinceChange.elapsed();
  if (left > 0) {
    m_autoRefresh.start(static_cast<int>(left));
  } else if (m_followsText) {
    Refresh();
  }
}

ScriptReader ActiveScript::Reader() const {
  return [this](const std::string& path, size_t mostBytes) -> std::optional<std::string> {
    const CQuillDoc* open = m_documents.Find(path);
    if (open == nullptr || !open->Buffer().IsInitialised()) return ReadScriptFile(path, mostBytes);
    std::string text;
    open->Buffer().CopyRange({{}, open->Buffer().EndOfText()}, text);
    return text;
  };
}

std::shared_ptr<const ScriptFacts> ActiveScript::Read(bool withIncluded) const {
  const CQuillView* view = m_active.ViewWithText();
  if (view == nullptr) return m_shown;
  return ReadScriptFacts(*view->Buffer(), view->FilePath(), ReadText(m_settings, settings::kOnlyElements),
                         withIncluded ? Reader() : ScriptReader());
}

const std::shared_ptr<const ScriptFacts>& ActiveScript::Latest() {
  if (m_latest == nullptr) m_latest = Read(ReadFlag(m_settings, settings::kLoadIncluded));
  return m_latest;
}

std::shared_ptr<const ScriptFacts> ActiveScript::LatestWithIncluded() {
  const std::shared_ptr<const ScriptFacts> latest = Latest();
  const bool hasAll = latest->outline.includes.empty() || ReadFlag(m_settings, settings::kLoadIncluded);
  return hasAll ? latest : Read(true);
}

void ActiveScript::Refresh() {
  CQuillView* view = m_active.ViewWithText();
  if (view == nullptr) return;
  m_autoRefresh.stop();
  m_shown = m_latest = Read(ReadFlag(m_settings, settings::kLoadIncluded));
  view->Functions().Clear();
  view->Variables().Clear();
  CollectNames(m_shown->outline, view->Functions(), view->Variables());
  view->VocabularyChanged();
  Q_EMIT Refreshed();
}

}  // namespace quill
