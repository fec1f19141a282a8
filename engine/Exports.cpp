// The functions that the library exports. What outlives a session is here: its arena, the descriptors it may
// have left open, and the one pointer that everything hangs on.
#include <atomic>

#include "engine/korvel.h"
#include "engine/run/Session.h"
#include "engine/show/WindowHost_posix.h"

namespace korvel {
namespace {

Arena arena;
OpenDescriptors descriptors;
WindowHost host;
std::atomic<Session*> current{nullptr};

Session* Current() {
  return current.load(std::memory_order_acquire);
}

}  // namespace
}  // namespace korvel

using korvel::Current;
using korvel::Session;

void* engine_open(const char* command_line, void*) {
  korvel::current.store(nullptr, std::memory_order_release);
  korvel::host.Reset();
  if (!korvel::arena.Reset()) return nullptr;
  Session* session = Session::Make(korvel::arena, korvel::host, korvel::descriptors);
  session->Open(command_line);
  if (session->errors.count() == 0) korvel::host.Begin(korvel::arena, session->options);
  korvel::current.store(session, std::memory_order_release);
  return session;
}

int engine_frame(void) {
  Session* session = Current();
  return session != nullptr && session->Frame() ? 1 : 0;
}

// The memory stays until the next session: a watch may be about to read in it.
void engine_close(void) {
  korvel::current.store(nullptr, std::memory_order_release);
  korvel::host.End();
}

void* engine_getobj(const char* name) {
  Session* session = Current();
  return session != nullptr ? session->FindObject(name) : nullptr;
}

void* engine_getfunc(const char* name) {
  Session* session = Current();
  return session != nullptr ? session->FindFunction(name) : nullptr;
}

void* _str(const char* content) {
  Session* session = Current();
  return session != nullptr ? session->MakeHostString(content) : nullptr;
}

int engine_debugbreakpoint(const char* file, int line, int set) {
  Session* session = Current();
  if (session == nullptr || file == nullptr || line < 1 || session->errors.count() > 0) return 0;
  return session->debugger.SetBreakpoint(file, static_cast<uint32_t>(line), set != 0) ? 1 : 0;
}

void engine_debugposition(const char** file, int* reserved, int* line) {
  const Session* session = Current();
  korvel::Place place;
  if (session != nullptr && session->errors.count() == 0) place = session->debugger.position();
  if (file != nullptr) *file = place.file != nullptr ? place.file->name : nullptr;
  if (reserved != nullptr) *reserved = 0;
  if (line != nullptr) *line = static_cast<int>(place.line);
}

int engine_kind(const void* address) {
  const Session* session = Current();
  return session != nullptr ? session->KindOfAddress(address) : 0;
}

void engine_setoutput(void (*take)(const char* line)) {
  korvel::host.SetOutput(take);
}
