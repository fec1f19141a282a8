#include "intel/ui/ActiveScript.h"

#include <utility>

#include "settings/Settings.h"
#include "shell/FileIdentity.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "text/ui/TextWatch.h"

namespace quill {
namespace {

constexpr qint64 kSlice = 1;                        ///< milliseconds of reading between two events
constexpr int kGroupsInSlice = 8;                   ///< at least
constexpr int kGroupsAtFirst = 4;                   ///< that are shown before all are read
constexpr int64_t kMostCopied = int64_t{64} << 20;  ///< bytes of open windows' texts for the other thread

bool IsReadAtOnce(const CCrystalTextBuffer& buffer) {
  if (buffer.LineCount() > ActiveScript::kMostLinesAtOnce) return false;
  int64_t bytes = 0;
  for (int32_t line = 0; line < buffer.LineCount(); ++line) bytes += buffer.LineLength(line);
  return bytes <= ActiveScript::kMostBytesAtOnce;
}

std::string TextOf(const CCrystalTextBuffer& buffer) {
  std::string text;
  buffer.CopyRange({{}, buffer.EndOfText()}, text);
  return text;
}

}  // namespace

ActiveScript::ActiveScript(SettingsStore& settings, ActiveView& active, const Documents& documents)
    : m_settings(settings),
      m_active(active),
      m_documents(documents),
      m_shown(std::make_shared<ScriptFacts>()),
      m_latest(m_shown),
      m_followsText(ReadFlag(settings, settings::kAutoRefreshAtStart)) {
  m_autoRefresh.setSingleShot(true);
  connect(&m_autoRefresh, &QTimer::timeout, this, &ActiveScript::OnTimer);
  // Not zero: such timers may be heard several times before anything else is.
  m_slices.setSingleShot(true);
  m_slices.setInterval(1);
  connect(&m_slices, &QTimer::timeout, this, &ActiveScript::ReadSlice);
  connect(&active, &ActiveView::Changed, this, &ActiveScript::Follow);
}

ActiveScript::~ActiveScript() = default;

void ActiveScript::SettingsApplied() {
  m_followsText = ReadFlag(m_settings, settings::kAutoRefresh);
}

// The text

void ActiveScript::Follow() {
  m_watch.reset();
  m_outline.reset();
  m_followed.reset();
  m_autoRefresh.stop();
  m_slices.stop();
  m_task.Cancel();
  m_isStale = false;
  Q_EMIT ReadingChanged();
  if (m_active.View() == nullptr) return;
  ++m_changes;
  m_latest.reset();
  m_watch = std::make_unique<TextWatch>(
      *m_active.View(), TextWatch::Callbacks{[this](const TextChange* change, uint32_t hints, int32_t) {
                                               const bool isReset = (hints & hint::kReset) != 0;
                                               if (m_outline != nullptr && isReset) m_outline->Restart();
                                               if (m_outline != nullptr && change != nullptr && !isReset)
                                                 m_outline->OnTextChange(*change);
                                               if (change != nullptr || isReset) OnTextChanged();
                                             },
                                             [this] {
                                               m_slices.stop();
                                               m_task.Cancel();
                                               m_outline.reset();
                                               OnTextChanged();
                                             }});
  Refresh();
}

void ActiveScript::OnTextChanged() {
  ++m_changes;
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
    Read();
  }
}

// Reading

void ActiveScript::Refresh() {
  m_followed.reset();  // the files may be others by now
  Read();
}

bool ActiveScript::PrepareOutline(CQuillView& view) {
  const std::string only = ReadText(m_settings, settings::kOnlyElements);
  if (m_outline != nullptr && m_outline->OnlyElements() == only) return false;
  m_outline = std::make_unique<LiveOutline>(*view.Buffer(), only);
  return true;
}

void ActiveScript::Read() {
  CQuillView* view = m_active.ViewWithText();
  if (view == nullptr) return;
  m_autoRefresh.stop();
  const bool isNew = PrepareOutline(*view);
  if (IsReadAtOnce(*view->Buffer())) return ReadAtOnce(*view, isNew);
  if (m_task.IsRunning()) {
    m_isStale = true;  // its outcome is shown first: who goes on typing would never see one
    return;
  }
  if (isNew) {
    for (int i = 0; i < kGroupsAtFirst; ++i) m_outline->ReadSome();
    auto facts = std::make_shared<ScriptFacts>(*MakeScriptFacts(m_outline->Parts(), nullptr, *m_shown));
    facts->isWhole = false;
    Show(std::move(facts), false);
  }
  m_slices.start();
  Q_EMIT ReadingChanged();
}

void ActiveScript::ReadAtOnce(CQuillView& view, bool isNew) {
  m_slices.stop();
  m_task.Cancel();
  m_isStale = false;
  while (!m_outline->IsRead()) m_outline->ReadSome();
  Source source = SourceOf(view);
  source.reader = nullptr;
  source.followed = nullptr;
  const Outcome own = MakeFacts(source, nullptr);
  const bool hasFiles =
      ReadFlag(m_settings, settings::kLoadIncluded) && !own.facts->outline.Orders().includes.empty();
  if (hasFiles) {
    SortLater(view);
    if (!isNew) return;  // what is shown has the files: it stays until they are known again
  }
  Show(own.facts, !hasFiles);
  Q_EMIT ReadingChanged();
}

void ActiveScript::ReadSlice() {
  CQuillView* view = m_active.ViewWithText();
  if (view == nullptr || m_outline == nullptr) return;
  QElapsedTimer clock;
  clock.start();
  // Some in any case: on a busy machine the clock runs while nothing is read.
  for (int i = 0; !m_outline->IsRead() && (i < kGroupsInSlice || clock.elapsed() < kSlice); ++i) {
    m_outline->ReadSome();
  }
  if (!m_outline->IsRead()) return m_slices.start();
  SortLater(*view);
}

ActiveScript::Source ActiveScript::SourceOf(const CQuillView& view) const {
  Source source{m_outline->Parts(), m_shown, m_followed, view.FilePath(), nullptr};
  if (ReadFlag(m_settings, settings::kLoadIncluded)) source.reader = Reader();
  return source;
}

void ActiveScript::SortLater(CQuillView& view) {
  auto source = std::make_shared<Source>(SourceOf(view));
  if (source->reader) source->reader = ReaderOfCopies();
  m_task.Start([this, source, changes = m_changes](const std::atomic<bool>& stop) {
    if (source->reader) {
      source->reader = [read = source->reader, &stop](const std::string& path, size_t mostBytes) {
        return stop.load() ? std::nullopt : read(path, mostBytes);
      };
    }
    Outcome outcome = MakeFacts(*source, &stop);
    return [this, outcome = std::move(outcome), changes] {
      m_followed = outcome.followed;
      Show(outcome.facts, changes == m_changes);
      if (std::exchange(m_isStale, false)) Read();
      Q_EMIT ReadingChanged();
    };
  });
  Q_EMIT ReadingChanged();
}

ActiveScript::Outcome ActiveScript::MakeFacts(const Source& source, const std::atomic<bool>* stop) {
  Outcome outcome;
  outcome.facts = MakeScriptFacts(source.parts, nullptr, *source.previous, stop);
  if (outcome.facts == nullptr || !source.reader) return outcome;
  const Outline& own = outcome.facts->outline;
  if (own.Orders().includes.empty()) return outcome;
  std::vector<std::string> lines = own.Paths();
  for (const NamedFile& file : own.Includes()) lines.push_back(file.name);
  if (source.followed != nullptr && source.followed->lines == lines) {
    outcome.followed = source.followed;
  } else {
    outcome.followed = std::make_shared<const Followed>(
        Followed{std::move(lines), FollowIncludes(own, source.path, source.reader)});
  }
  outcome.facts = MakeScriptFacts(source.parts, &outcome.followed->files, *outcome.facts, stop);
  return outcome;
}

void ActiveScript::Show(std::shared_ptr<const ScriptFacts> facts, bool isLatest) {
  m_shown = std::move(facts);
  if (isLatest) m_latest = m_shown;
  if (CQuillView* view = m_active.ViewWithText()) {
    const auto& names = m_shown->names;
    view->SetNames({names, &names->functions}, {names, &names->variables});
  }
  Q_EMIT Refreshed();
}

// For those who must be right

ScriptReader ActiveScript::Reader() const {
  return [this](const std::string& path, size_t mostBytes) -> std::optional<std::string> {
    const CQuillDoc* open = m_documents.Find(path);
    if (open == nullptr || !open->Buffer().IsInitialised()) return ReadScriptFile(path, mostBytes);
    return TextOf(open->Buffer());
  };
}

ScriptReader ActiveScript::ReaderOfCopies() const {
  auto texts = std::make_shared<std::vector<std::pair<std::string, std::string>>>();
  int64_t left = kMostCopied;
  for (const CQuillDoc* open : m_documents.All()) {
    const CCrystalTextBuffer& buffer = open->Buffer();
    const DocumentFile& file = open->File();
    if (open == m_active.Document() || !file.HasPath() || !file.MayHoldUnsavedText()) continue;
    for (int32_t line = 0; line < buffer.LineCount() && left >= 0; ++line) {
      left -= buffer.LineLength(line) + 2;
    }
    if (left < 0) break;
    texts->emplace_back(file.Path(), TextOf(buffer));
  }
  return [texts](const std::string& path, size_t mostBytes) -> std::optional<std::string> {
    for (const auto& [openPath, text] : *texts) {
      if (openPath == path || IsSameFile(openPath, path)) return text;
    }
    return ReadScriptFile(path, mostBytes);
  };
}

const std::shared_ptr<const ScriptFacts>& ActiveScript::Latest() {
  if (m_latest != nullptr) return m_latest;
  CQuillView* view = m_active.ViewWithText();
  if (view == nullptr) return m_shown;
  PrepareOutline(*view);
  if (!IsReadAtOnce(*view->Buffer()) && (!m_shown->isWhole || m_outline->UnreadLines() > kMostLinesAtOnce)) {
    return m_shown;
  }
  while (!m_outline->IsRead()) m_outline->ReadSome();
  m_latest = MakeFacts(SourceOf(*view), nullptr).facts;
  return m_latest;
}

std::shared_ptr<const ScriptFacts> ActiveScript::LatestWithIncluded() {
  const std::shared_ptr<const ScriptFacts> latest = Latest();
  const CQuillView* view = m_active.ViewWithText();
  const Outline& own = latest->outline;
  if (view == nullptr || own.Orders().includes.empty() || !latest->includedPaths.empty()) return latest;
  const IncludedFiles included = FollowIncludes(own, view->FilePath(), Reader());
  return MakeScriptFacts(own.Parts(), &included, *latest);
}

}  // namespace quill
