#include "engine/run/Session.h"

#include <algorithm>
#include <cstdio>

#include "engine/run/Screen.h"

namespace korvel {
namespace {

constexpr int64_t kSecond = 1'000'000;
constexpr int64_t kWhileStopped = 5000;
constexpr uint16_t kLongestChain = 200;

// The file name goes up to the first " -".
std::string_view ReadOptions(const char* command_line, Options* options) {
  std::string_view line = command_line == nullptr ? std::string_view() : std::string_view(command_line);
  size_t end = line.find(" -");
  if (end == std::string_view::npos) end = line.size();
  std::string_view name = line.substr(0, end);
  std::string_view rest = line.substr(end);
  const auto has = [rest](std::string_view option) {
    for (size_t at = rest.find(option); at != std::string_view::npos; at = rest.find(option, at + 1)) {
      const size_t behind = at + option.size();
      if (at > 0 && rest[at - 1] == ' ' && (behind == rest.size() || rest[behind] == ' ')) return true;
    }
    return false;
  };
  options->no_sound = has("-os");
  options->no_music = has("-om");
  options->no_joystick = has("-nj");
  options->no_mouse = has("-nm");
  options->in_window = has("-wnd");
  while (!name.empty() && (name.front() == ' ' || name.front() == '"')) name.remove_prefix(1);
  while (!name.empty() && (name.back() == ' ' || name.back() == '"')) name.remove_suffix(1);
  return name;
}

// A direction of its own in each frame, weaker towards the end.
Triple ShakeOf(const View& view, int64_t now) {
  if (now >= view.shake_end || view.shake_end <= view.shake_begin) return {0, 0, 0};
  const double left =
      static_cast<double>(view.shake_end - now) / static_cast<double>(view.shake_end - view.shake_begin);
  const double reach = ToDouble(view.shake_strength) * left;
  uint64_t state = static_cast<uint64_t>(now) * 0x9e3779b97f4a7c15u + 1;
  const auto next = [&state, reach] {
    state ^= state >> 31;
    state *= 0xbf58476d1ce4e5b9u;
    state ^= state >> 29;
    return (static_cast<double>(state % 2001) / 1000 - 1) * reach;
  };
  const double x = next();
  const double y = next();
  return {x, y, next()};
}

}  // namespace

Session* Session::Make(Arena& arena, Host& host, OpenDescriptors& descriptors) {
  return new (arena.Allocate(sizeof(Session))) Session(arena, host, descriptors);
}

Session::Session(Arena& arena_of_all, Host& host_of_all, OpenDescriptors& descriptors)
    : arena(arena_of_all),
      host(host_of_all),
      folder(arena, descriptors),
      names(arena),
      errors(arena, folder),
      program(arena),
      members(names),
      world(arena, folder),
      scheduler(arena),
      debugger(program, arena),
      machine(*this),
      scene(arena) {
  me_cell.head.kind = you_cell.head.kind = kKorvelEntityPointer;
  me_cell.wanted = you_cell.wanted = kKorvelEntity;
  command_count_ = CommandCount();
  commands_ = static_cast<const Command**>(arena.Allocate(sizeof(Command*) * (command_count_ + 1)));
  signatures_ = static_cast<Signature*>(arena.Allocate(sizeof(Signature) * (command_count_ + 1)));
  for (uint32_t i = 0; i < command_count_; ++i) {
    commands_[i] = &CommandAt(i);
    signatures_[i] = ReadSignature(commands_[i]->signature);
    names.Intern(commands_[i]->name)->command = static_cast<int16_t>(i);
  }
}

void Session::Open(const char* command_line) {
  phase_ = Phase::kEnded;
  const std::string_view name = ReadOptions(command_line, &options);
  arena.SetExit(&exit_);
  bool too_large = false;
  const SourceFile* main = folder.OpenMain(name, &too_large);
  folder.RemoveErrorFile();
  if (main == nullptr) {
    errors.Add({}, too_large ? "The script \"%.*s\" is too large." : "The script \"%.*s\" was not found.",
               static_cast<int>(name.size()), name.data());
    return;
  }
  if (setjmp(exit_) != 0) {
    errors.Add({main, 1}, "There is not enough memory for this script.");
    return;
  }
  Preprocessor source(folder, names, errors, arena);
  source.Read(*main);
  Compiler compiler({program, source, names, errors, arena, members, world});
  compiler.Compile();
  if (errors.count() > 0) return;
  program.cells[program.video_mode->cell] = scene.screen.seen_mode = 6 * kOne;
  debugger.Begin();
  begin_ = last_frame_ = next_frame_ = fps_begin_ = host.Now();
  phase_ = Phase::kStarters;
}

Place Session::CurrentPlace() const {
  if (machine.pc == nullptr || machine.task == nullptr) return {};
  const auto at = static_cast<uint32_t>(machine.pc - 1 - program.code.data());
  const Function* function = program.FunctionAt(at);
  return {function != nullptr ? function->place.file : nullptr, program.LineOf(at)};
}

void Session::Fault(const char* sentence) {
  errors.Fault(CurrentPlace(), sentence);
}
void Session::Fault(std::string_view sentence) {
  errors.Fault(CurrentPlace(), sentence);
}

bool Session::StartFunction(Function& function, KorvelHead* me, KorvelHead* you, Value first_argument) {
  // A function that starts itself before it waits would go on until memory ends, as a call of itself would.
  if (machine.task->chain >= kLongestChain) {
    Fault("Functions start one another more than 200 deep without a wait; this one ends here.");
    machine.wanted = Switch::kEnd;
    return false;
  }
  Task* task = scheduler.Begin(function, me, you);
  if (task == nullptr) {
    Fault("There is no more memory for another function.");
    return false;
  }
  task->chain = static_cast<uint16_t>(machine.task->chain + 1);
  if (function.parameters > 0) task->frame[kFirstParameter] = first_argument;
  machine.started = task;
  machine.wanted = Switch::kStart;
  return true;
}

bool Session::Suspend(Task::State state, int64_t wake) {
  Task& task = *machine.task;
  if (task.may_not_wait) {
    Fault("This function must not wait; it ends here.");
    machine.wanted = Switch::kEnd;
    return false;
  }
  task.state = state;
  task.chain = 0;
  scheduler.SetWake(task, state == Task::kWaiting    ? WakeTime::AtFrame(wake)
                          : state == Task::kSleeping ? WakeTime::AtTime(wake)
                                                     : WakeTime::Never());
  machine.wanted = Switch::kSuspend;
  return true;
}

bool Session::RunTask(Task& task) {
  switch (machine.Run(task)) {
    case Machine::Outcome::kStopped:
      hit_stop_ = true;
      return false;
    case Machine::Outcome::kSpent:
      phase_ = Phase::kEnded;
      return false;
    case Machine::Outcome::kDone:
      break;
  }
  return true;
}

bool Session::RunNew(Function& function, bool may_wait) {
  Task* task = scheduler.Begin(function, nullptr, nullptr);
  if (task == nullptr) return true;
  task->may_not_wait = !may_wait;
  return RunTask(*task);
}

// The machine goes from one copy that is due to the next by itself.
bool Session::RunDue() {
  while (Task* task = scheduler.NextInWalk()) {
    if (!RunTask(*task)) return false;
  }
  return true;
}

bool Session::Frame() {
  if (phase_ == Phase::kEnded) return false;
  if (setjmp(exit_) != 0) {
    errors.Fault({}, "The game needs more memory than there is; it ends.");
    phase_ = Phase::kEnded;
    return false;
  }
  debugger.Refresh();
  if (debugger.stopped()) {
    TakeEvents();
    host.Present(*this, true);
    if (!exit_wanted && !debugger.MayGoOn()) {
      host.SleepUntil(host.Now() + kWhileStopped);
      return true;
    }
    if (debugger.stopped()) {
      // The window was closed: the game ends without the function that stands.
      phase_ = Phase::kEnded;
      return false;
    }
    hit_stop_ = false;
    TakeWrittenLocals();
    if (!RunTask(*machine.stopped)) return phase_ != Phase::kEnded;
  }
  return Advance();
}

// Goes through the parts of the frame; each is left before its functions run, so that a stop in one of them
// finds its way back.
bool Session::Advance() {
  hit_stop_ = false;
  for (;;) {
    const bool ends_frame = phase_ == Phase::kShow;
    const bool goes_on = Step();
    if (hit_stop_) return true;
    if (phase_ == Phase::kEnded) return false;
    if (ends_frame && goes_on) return true;
  }
}

bool Session::Step() {
  switch (phase_) {
    case Phase::kStarters:
      if (next_starter_ < program.starters.size()) return RunNew(*program.starters[next_starter_++], true);
      phase_ = Phase::kMain;
      return true;
    case Phase::kMain:
      phase_ = Phase::kBegun;
      return RunNew(*program.main, true);
    case Phase::kBegun:
      // As at the end of a frame, so that a wait(1) of main is enough for what it removed or loaded.
      Sweep();
      phase_ = Phase::kInput;
      if (level_wanted) {
        LoadLevel();
        scheduler.BeginWalk(frames_, game_time_);
        phase_ = Phase::kFirstLevel;
      }
      return true;
    case Phase::kFirstLevel:
      if (!RunDue()) return false;
      phase_ = Phase::kInput;
      return true;
    case Phase::kInput:
      BeginFrame();
      phase_ = Phase::kKeys;
      next_key_ = 0;
      return each_frame == nullptr || RunNew(*each_frame, false);
    case Phase::kKeys:
      while (next_key_ < input.pressed_count()) {
        if (Function* bound = input.bound(input.pressed(next_key_++))) return RunNew(*bound, true);
      }
      phase_ = Phase::kWaiting;
      WakeWaiters();
      scheduler.BeginWalk(frames_, game_time_);
      return true;
    case Phase::kWaiting:
      if (!RunDue()) return false;
      phase_ = Phase::kFinish;
      return true;
    case Phase::kFinish:
      phase_ = FinishFrame() ? Phase::kLevel : Phase::kShow;
      return true;
    case Phase::kLevel:
      if (!RunDue()) return false;
      phase_ = Phase::kShow;
      return true;
    case Phase::kShow:
      ShowFrame();
      phase_ = exit_wanted ? Phase::kExit : Phase::kInput;
      // The frame in which the game ends is not the last one that the host asks for.
      return true;
    case Phase::kExit:
      phase_ = Phase::kLastFrame;
      return at_exit == nullptr || RunNew(*at_exit, false);
    case Phase::kLastFrame:
    case Phase::kEnded:
      phase_ = Phase::kEnded;
      return false;
  }
  return false;
}

void Session::BeginFrame() {
  const int64_t now = host.Now();
  ++frames_;
  if (frames_ == 1) {
    frame_time_ = FromDouble(1000.0 / 60);
  } else {
    frame_time_ = std::clamp(FromDouble(static_cast<double>(now - last_frame_) / 1000), kOne, 100 * kOne);
  }
  frame_time_ = paused ? 0 : Cut(MultiplySteps(frame_time_, time_factor));
  game_time_ += int64_t{frame_time_} * 1000 / kOne;
  last_frame_ = now;
  ++fps_count_;
  if (now - fps_begin_ >= kSecond) {
    fps = fps_count_;
    fps_count_ = 0;
    fps_begin_ = now;
  }
  input.BeginFrame();
  TakeEvents();
  scene.marks.Clear();
}

void Session::TakeEvents() {
  InputEvent event;
  while (host.NextEvent(&event)) {
    if (options.no_mouse && event.kind >= InputEvent::kMouseMove && event.kind <= InputEvent::kWheel)
      continue;
    if (options.no_joystick && event.kind >= InputEvent::kJoyCount) continue;
    if (!input.Take(event, world)) exit_wanted = true;
  }
}

// Functions that wait for a key or a text become ready for this frame.
void Session::WakeWaiters() {
  const bool key = input.pressed_count() > 0;
  const int text = input.typing() ? input.TakeTextResult() : -1;
  bool types = false;
  if (!key && text < 0 && !input.typing()) return;
  scheduler.ForEach([&](Task& task) {
    if (task.state == Task::kForText) types = true;
    const bool wakes = (task.state == Task::kForKey && key) || (task.state == Task::kForText && text >= 0);
    if (!wakes) return;
    *task.result = task.state == Task::kForKey ? FromInt(input.pressed(0)) : FromInt(text);
    task.state = Task::kWaiting;
    scheduler.SetWake(task, WakeTime::AtFrame(frames_));
  });
  // Whoever typed was ended by another function.
  if (!types && input.typing()) input.EndText();
}

void Session::MoveViews() {
  for (KorvelHead* head : world.all(kKorvelView)) {
    auto& view = *reinterpret_cast<View*>(head);
    if (view.guide != nullptr && !world.IsRemoved(view.guide)) {
      const double pan = ToDouble(view.guide->pan) * 3.14159265358979323846 / 180;
      const double distance = ToDouble(view.distance);
      view.x = FromDouble(ToDouble(view.guide->x) - std::cos(pan) * distance);
      view.y = FromDouble(ToDouble(view.guide->y) - std::sin(pan) * distance);
      view.z = FromDouble(ToDouble(view.guide->z) + 0.3 * distance);
      view.pan = view.guide->pan;
      view.tilt = FromDouble(-std::atan2(0.3, 1) * 180 / 3.14159265358979323846);
      view.roll = 0;
    }
    view.shake = ShakeOf(view, game_time_);
  }
}

// What scripts asked for and the end of the frame brings. True when a level was loaded, whose functions begin
// now.
bool Session::FinishFrame() {
  MoveViews();
  for (KorvelHead* text : world.all(kKorvelText)) World::CountCharacters(*reinterpret_cast<Text*>(text));
  Sweep();
  if (!level_wanted) return false;
  LoadLevel();
  scheduler.BeginWalk(frames_, game_time_);
  return true;
}

void Session::ShowFrame() {
  FollowScreen(*this);
  sounds.Sweep(real_time());
  host.Present(*this, false);
  WriteShot(*this);
  if (frame_limit > 0) {
    next_frame_ += kSecond / frame_limit;
    const int64_t now = host.Now();
    if (next_frame_ < now) next_frame_ = now;
    host.SleepUntil(next_frame_);
  }
}

// Pointers to what was removed become null: in variables, in waiting functions, in other objects.
void Session::Sweep() {
  if (world.removed().empty()) return;
  List<KorvelHead*>& removed = world.removed();
  std::sort(removed.begin(), removed.end());
  for (KorvelHead* object : removed) {
    if (object->kind == kKorvelEntity) scheduler.StopAllOf(object);
    if (object == reinterpret_cast<const KorvelHead*>(input.target())) input.EndText();
  }
  const auto gone = [&removed](const void* object) {
    return std::binary_search(removed.begin(), removed.end(),
                              static_cast<KorvelHead*>(const_cast<void*>(object)));
  };
  for (const Symbol* symbol : program.symbols) {
    if (symbol->kind != SymbolKind::kPointer) continue;
    PointerCell* pointer = program.PointerOf(*symbol);
    if (pointer->target != nullptr && gone(pointer->target)) {
      __atomic_store_n(&pointer->target, nullptr, __ATOMIC_RELEASE);
    }
  }
  scheduler.ForEach([&](Task& task) {
    if (gone(task.me)) task.me = nullptr;
    if (gone(task.you)) task.you = nullptr;
    CallStack calls(program, task, false);
    for (Call call; calls.Next(&call);) {
      const Function& function = *call.function;
      // What a local array holds are numbers, whatever they look like.
      uint32_t array = 0;
      for (uint32_t i = kFirstParameter; i < function.registers; ++i) {
        while (array < function.local_count && function.locals[array].array_slot < i) ++array;
        if (array < function.local_count && function.locals[array].array_slot == i) {
          const uint32_t cells = std::max<uint32_t>(function.locals[array].array_size, 3);
          i += (cells + 1) / 2;
          continue;
        }
        Value& value = call.frame[i];
        if (IsObject(value) && gone(reinterpret_cast<void*>(value))) value = kNull;
      }
    }
  });
  SetMe(nullptr, nullptr);
  scene.marks.Drop(gone);
  sounds.Drop(gone);
  world.Sweep();
}

// A level file has an entity a line: name file x y z pan tilt roll scale [function].
void Session::LoadLevel() {
  level_wanted = false;
  for (Entity* entity = world.first_entity(); entity != nullptr; entity = entity->next)
    world.Remove(&entity->head);
  Sweep();
  if (*next_level == 0) return;
  const std::string_view text = folder.ReadWhole(next_level, arena);
  size_t at = 0;
  while (at < text.size()) {
    size_t end = text.find('\n', at);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(at, end - at);
    at = end + 1;
    const auto word = [&line] {
      while (!line.empty() && (line.front() == ' ' || line.front() == '\t' || line.front() == '\r'))
        line.remove_prefix(1);
      size_t length = 0;
      while (length < line.size() && line[length] != ' ' && line[length] != '\t' && line[length] != '\r')
        ++length;
      const std::string_view found = line.substr(0, length);
      line.remove_prefix(length);
      return found;
    };
    const std::string_view name = word();
    if (name.empty() || name.front() == '#') continue;
    char name_text[256];
    std::snprintf(name_text, sizeof name_text, "%.*s", static_cast<int>(std::min<size_t>(name.size(), 255)),
                  name.data());
    Entity* entity = world.MakeEntity(word(), name_text);
    if (entity == nullptr) {
      errors.Fault({}, "A file of an entity of the level was not found.");
      continue;
    }
    Fixed* const members_of_line[] = {&entity->x,   &entity->y,    &entity->z,
                                      &entity->pan, &entity->tilt, &entity->roll};
    for (Fixed* member : members_of_line) {
      const std::string_view number = word();
      *member = ReadFixed(number.data(), number.size(), nullptr);
    }
    const std::string_view scale = word();
    if (!scale.empty()) {
      entity->scale_x = entity->scale_y = entity->scale_z =
          std::clamp(ReadFixed(scale.data(), scale.size(), nullptr), 0, 1000 * kOne);
    }
    const std::string_view function = word();
    const Name* found = function.empty() ? nullptr : names.Find(function);
    if (found != nullptr && found->symbol != nullptr && found->symbol->kind == SymbolKind::kFunction) {
      // It begins when the level is there as a whole, before the frame is shown.
      Task* task = scheduler.Begin(*static_cast<Function*>(found->symbol->object), &entity->head, nullptr);
      if (task != nullptr) {
        task->state = Task::kWaiting;
        scheduler.SetWake(*task, WakeTime::AtFrame(frames_));
      }
    }
  }
  folder.GiveBack(text, arena);
}

// A host writes the lower half of a register that holds a number; the upper half follows.
void Session::TakeWrittenLocals() {
  scheduler.ForEach([this](Task& task) {
    CallStack calls(program, task, &task == machine.stopped);
    for (Call call; calls.Next(&call);) {
      for (uint32_t i = 0; i < call.function->local_count; ++i) {
        Value& value = call.frame[call.function->locals[i].reg];
        if (HoldsNumber(value)) value = static_cast<Fixed>(value);
      }
    }
  });
}

void* Session::FindLocal(const Name& name) {
  // Once debug_mode says to go on, the engine may do so at any moment.
  if (!debugger.stopped() || debugger.WantedMode() != Debugger::kBreak) return nullptr;
  const Task* task = debugger.stopped_task();
  if (task == nullptr) return nullptr;
  Call call;
  CallStack(program, *task, true).Next(&call);
  for (uint32_t i = 0; i < call.function->local_count; ++i) {
    const Local& local = call.function->locals[i];
    if (local.name == &name) return FindValue(call, local);
  }
  return nullptr;
}

void* Session::FindObject(const char* text) {
  const Name* name = text == nullptr ? nullptr : names.Find(text);
  if (name == nullptr) return nullptr;
  if (void* local = FindLocal(*name)) return local;
  if (name->keyword == Keyword::kMe || name->keyword == Keyword::kYou) {
    PointerCell& cell = name->keyword == Keyword::kMe ? me_cell : you_cell;
    return __atomic_load_n(&cell.target, __ATOMIC_RELAXED) != nullptr ? &cell : nullptr;
  }
  const Symbol* symbol = name->symbol;
  if (symbol == nullptr || program.cells == nullptr) return nullptr;
  switch (symbol->kind) {
    case SymbolKind::kNumber:
    case SymbolKind::kSkill:
      return program.cells + symbol->cell;
    case SymbolKind::kArray:
      return program.ArrayOf(*symbol)->cells;
    case SymbolKind::kPointer: {
      PointerCell* pointer = program.PointerOf(*symbol);
      KorvelHead* target = __atomic_load_n(&pointer->target, __ATOMIC_ACQUIRE);
      if (target == nullptr) return nullptr;
      return symbol->type == kKorvelEntity ? static_cast<void*>(pointer) : target;
    }
    default:
      return symbol->object;
  }
}

void* Session::FindFunction(const char* text) {
  const Name* name = text == nullptr ? nullptr : names.Find(text);
  const Symbol* symbol = name != nullptr ? name->symbol : nullptr;
  return symbol != nullptr && symbol->kind == SymbolKind::kFunction ? symbol->object : nullptr;
}

int Session::KindOfAddress(const void* address) const {
  const auto* byte = static_cast<const char*>(address);
  const auto* cells = reinterpret_cast<const char*>(program.cells);
  if (byte == nullptr) return kKorvelNumber;
  if (byte >= cells && byte < cells + program.cell_count * sizeof(Fixed)) {
    for (const Symbol* symbol : program.symbols) {
      if (symbol->kind == SymbolKind::kPointer && program.PointerOf(*symbol) == address)
        return kKorvelEntityPointer;
    }
    return kKorvelNumber;
  }
  if (debugger.stopped() && debugger.stopped_task() != nullptr) {
    const Task* task = debugger.stopped_task();
    for (const Segment* segment = task->segment; segment != nullptr; segment = segment->previous) {
      if (byte >= reinterpret_cast<const char*>(segment->slots) &&
          byte < reinterpret_cast<const char*>(segment->end)) {
        return kKorvelNumber;
      }
    }
  }
  return static_cast<const KorvelHead*>(address)->kind;
}

void* Session::MakeHostString(const char* content) {
  const int place = next_host_string_++ % 16;
  StringObject& string = host_strings_[place];
  const size_t length = std::min<size_t>(content == nullptr ? 0 : std::strlen(content), 4000);
  std::memcpy(host_texts_[place], content, length);
  host_texts_[place][length] = 0;
  string.head.kind = kKorvelString;
  string.head.flags = kByScript | kLiteral;
  string.text = host_texts_[place];
  string.length = static_cast<uint32_t>(length);
  return &string;
}

}  // namespace korvel
