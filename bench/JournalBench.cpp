#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "GeneratedScript.h"
#include "shell/RecoveryJournal.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// A script of so many kilobytes, open with a journal.
class Session {
 public:
  Session(int64_t kilobytes, bool withJournal) {
    namespace fs = std::filesystem;
    m_folder = (fs::temp_directory_path() / "quill-bench-journal").string();
    fs::create_directories(m_folder);
    const std::string path = m_folder + "/" + std::to_string(kilobytes) + ".vsl";
    std::ofstream(path, std::ios::binary) << bench::GeneratedScript(static_cast<size_t>(kilobytes) * 1000);
    m_journal = std::make_unique<RecoveryJournal>(m_buffer, withJournal ? m_folder : "");
    if (!m_buffer.LoadFile(path)) std::abort();
    m_journal->Restart(path, "", FileIdentity::Of(path));
    m_caret = {m_buffer.LineCount() / 2, 0};
  }
  ~Session() {
    m_journal->Remove();
    m_journal.reset();
    std::filesystem::remove_all(m_folder);
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Type() {
    constexpr int32_t kLineLength = 60;
    const bool lineIsFull = m_caret.character == kLineLength;
    m_buffer.InsertTextAt(nullptr, m_caret, lineIsFull ? "\r\n" : "x", m_caret, action::kTyping);
  }
  RecoveryJournal& Journal() { return *m_journal; }

 private:
  std::string m_folder;
  CCrystalTextBuffer m_buffer;
  std::unique_ptr<RecoveryJournal> m_journal;
  TextPosition m_caret;
};

void BM_TypeAKey(benchmark::State& state) {
  Session session(state.range(0), state.range(1) != 0);
  for (auto _ : state) session.Type();
}
BENCHMARK(BM_TypeAKey)->ArgNames({"KB", "journal"})->ArgsProduct({{100, 10'000}, {0, 1}});

/// The first write after a change: a small text goes out whole, a large one is referred to.
void BM_BeginJournal(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto session = std::make_unique<Session>(state.range(0), true);
    session->Type();
    state.ResumeTiming();
    if (!session->Journal().Flush()) state.SkipWithError("not written");
    state.PauseTiming();
    session.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_BeginJournal)
    ->ArgName("KB")
    ->Arg(100)
    ->Arg(4'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);

/// A second of fast typing written down.
void BM_FlushTenKeys(benchmark::State& state) {
  Session session(state.range(0), true);
  for (auto _ : state) {
    state.PauseTiming();
    for (int i = 0; i < 10; ++i) session.Type();
    state.ResumeTiming();
    if (!session.Journal().Flush()) state.SkipWithError("not written");
  }
}
BENCHMARK(BM_FlushTenKeys)->ArgName("KB")->Arg(10'000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quill
