#include "engine/objects/World.h"

#include <algorithm>
#include <cstdio>

#include "engine/language/Lexer.h"
#include "engine/objects/Pictures.h"

namespace korvel {
namespace {

constexpr int32_t kWhole = kOne;
constexpr uint32_t kMostLines = 200;

}  // namespace

World::World(Arena& arena, GameFolder& folder)
    : arena_(arena), folder_(folder), removed_(arena), models_(arena), paths_(arena) {
  for (auto*& list : lists_) list = arena.New<List<KorvelHead*>>(arena);
  camera_ = Make<View>(kKorvelView);
  camera_->head.flags |= kByScript | kShown;
}

size_t World::SizeOf(int kind) {
  switch (kind) {
    case kKorvelSound:
      return sizeof(Sound);
    case kKorvelBitmap:
      return sizeof(Bitmap);
    case kKorvelEntity:
    case kKorvelScreenEntity:
      return sizeof(Entity);
    case kKorvelPanel:
      return sizeof(Panel);
    case kKorvelText:
      return sizeof(Text);
    case kKorvelFont:
      return sizeof(Font);
    case kKorvelView:
      return sizeof(View);
    case kKorvelString:
      return sizeof(StringObject);
    case kKorvelMaterial:
      return sizeof(Material);
    case kKorvelSky:
      return sizeof(Sky);
    default:
      return sizeof(Window);
  }
}

void* World::MakeAny(int kind, size_t bytes) {
  void* memory = arena_.TryAllocate(bytes);
  if (memory == nullptr) return nullptr;
  auto* object = static_cast<KorvelHead*>(memory);
  object->kind = static_cast<int8_t>(kind);
  SetUsual(object);
  if (kind == kKorvelString && !Assign(*static_cast<StringObject*>(memory), {})) return nullptr;
  if (kind == kKorvelText && !MakeLines(*static_cast<Text*>(memory), 1)) return nullptr;
  if (kind != kKorvelEntity && kind != kKorvelString && kind != kKorvelBitmap) lists_[kind]->Add(object);
  return memory;
}

// Members that are not 0 or null without being named.
void World::SetUsual(KorvelHead* object) {
  const KorvelLayout* layout = korvel_layout(object->kind);
  for (size_t i = 0; layout != nullptr && i < layout->count; ++i) {
    const KorvelMember& member = layout->members[i];
    if (member.encoding != kKorvelFixed) continue;
    const std::string_view name = member.name;
    int32_t value = 0;
    if (name == "layer") value = object->kind == kKorvelSky ? 0 : kWhole;
    if (name == "alpha" || name == "fog") value = 100 * kWhole;
    if (name == "scale_x" || name == "scale_y" || name == "scale_z" || name == "lines") value = kWhole;
    if (name == "red" || name == "green" || name == "blue") {
      const bool dark = object->kind == kKorvelSky || object->kind == kKorvelWindow;
      value = dark ? 0 : 255 * kWhole;
    }
    if (name == "ambient") value = object->kind == kKorvelView ? 0 : 50 * kWhole;
    if (name == "albedo") value = 50 * kWhole;
    if (name == "fov") value = 60 * kWhole;
    std::memcpy(reinterpret_cast<char*>(object) + member.offset, &value, sizeof value);
  }
}

void* World::MakeObject(int kind, Name* name) {
  void* object = MakeAny(kind, SizeOf(kind));
  // A script that defines more than there is memory for cannot be run at all.
  if (object == nullptr) object = arena_.Allocate(size_t{1} << 62);
  auto* head = static_cast<KorvelHead*>(object);
  head->flags |= kByScript;
  if (kind == kKorvelScreenEntity) {
    head->flags |= kShown;
    static_cast<Entity*>(object)->name = name->text;
  }
  if (kind == kKorvelFont) SetFont(object, "", 16);
  return object;
}

void* World::MakeLiteral(std::string_view text) {
  auto* string = static_cast<StringObject*>(arena_.Allocate(sizeof(StringObject)));
  string->head.kind = kKorvelString;
  string->head.flags = kByScript | kLiteral;
  string->text = CopyText(arena_, text);
  string->length = static_cast<uint32_t>(text.size());
  return string;
}

void World::SetString(void* string, std::string_view text) {
  Assign(*static_cast<StringObject*>(string), text);
}

void World::SetObjectMember(void* object, const KorvelMember& member, void* value) {
  std::memcpy(static_cast<char*>(object) + member.offset, &value, sizeof value);
}

bool World::SetFile(void* object, std::string_view file, const char* folder) {
  auto* head = static_cast<KorvelHead*>(object);
  char path[kLongestPath];
  const bool found = folder_.FindMedia(file, folder, path);
  if (head->kind == kKorvelBitmap) {
    Bitmap* read = found ? ReadBitmap(path) : nullptr;
    const bool is_whole = read != nullptr;
    if (!is_whole) read = MakePlaceholder();
    if (read == nullptr) return false;
    const uint8_t flags = head->flags;
    *static_cast<Bitmap*>(object) = *read;
    head->flags = flags;
    return is_whole;
  }
  if (!found) return false;
  if (head->kind == kKorvelSound) {
    auto* sound = static_cast<Sound*>(object);
    sound->file = CopyText(arena_, path);
    sound->length_ms = SoundLength(folder_, path, arena_);
    return sound->length_ms > 0;
  }
  auto* entity = static_cast<Entity*>(object);
  return FindModel(path, &entity->picture, &entity->file);
}

void World::SetFont(void* object, std::string_view face, int height) {
  auto* font = static_cast<Font*>(object);
  font->face = CopyText(arena_, face);
  font->height = height;
  font->width = (height + 1) / 2;
  font->characters = 256;
  font->characters_per_line = 16;
}

void World::SetTextLines(void* object, uint32_t count) {
  auto* text = static_cast<Text*>(object);
  MakeLines(*text, count);
  text->lines = FromInt(count);
}

void World::SetTextLine(void* object, uint32_t line, std::string_view content) {
  auto* text = static_cast<Text*>(object);
  if (line >= kMostLines) return;
  if (line >= text->line_capacity && !MakeLines(*text, line + 1)) return;
  Assign(*static_cast<StringObject*>(text->strings[line]), content);
}

bool World::MakeLines(Text& text, uint32_t count) {
  if (count <= text.line_capacity) return true;
  auto** strings = static_cast<KorvelStringObject**>(arena_.TryAllocate(sizeof(void*) * count));
  if (strings == nullptr) return false;
  for (uint32_t i = 0; i < count; ++i) {
    strings[i] = i < text.line_capacity ? text.strings[i] : Make<StringObject>(kKorvelString);
    if (strings[i] == nullptr) return false;
    strings[i]->head.flags |= kByScript;
  }
  text.strings = strings;
  text.line_capacity = count;
  return true;
}

void World::CountCharacters(Text& text) {
  int64_t count = 0;
  const auto lines = static_cast<uint32_t>(Floor(text.lines));
  for (uint32_t i = 0; i < lines && i < text.line_capacity; ++i) count += text.strings[i]->length;
  __atomic_store_n(&text.length, FromInt(count), __ATOMIC_RELAXED);
}

bool World::Assign(StringObject& string, std::string_view text) {
  text = text.substr(0, kLongestText);
  if (string.text == nullptr || text.size() > string.capacity) {
    const auto capacity = static_cast<uint32_t>(text.size() < 15    ? 15
                                                : text.size() < 120 ? 127
                                                                    : kLongestText);
    char* memory = static_cast<char*>(arena_.TryAllocate(capacity + 1));
    if (memory == nullptr) return false;
    std::copy(text.begin(), text.end(), memory);
    if (string.text != nullptr) arena_.Free(string.text, string.capacity + 1);
    string.text = memory;
    string.capacity = capacity;
  } else if (!text.empty()) {
    std::memmove(string.text, text.data(), text.size());
  }
  string.text[text.size()] = 0;
  string.length = static_cast<uint32_t>(text.size());
  return true;
}

bool World::Append(StringObject& string, std::string_view text) {
  char whole[kLongestText];
  const size_t before = string.length;
  text = text.substr(0, kLongestText - before);
  std::memcpy(whole, string.text, before);
  std::copy(text.begin(), text.end(), whole + before);
  return Assign(string, {whole, before + text.size()});
}

Bitmap* World::MakeBitmap(int width, int height) {
  auto* bitmap = Make<Bitmap>(kKorvelBitmap);
  if (bitmap == nullptr) return nullptr;
  const size_t bytes = static_cast<size_t>(width) * static_cast<size_t>(height) * 3;
  bitmap->pixels = static_cast<uint8_t*>(arena_.TryAllocate(bytes + 16));
  if (bitmap->pixels == nullptr) return nullptr;
  bitmap->width = width;
  bitmap->height = height;
  bitmap->bytes_per_pixel = 3;
  bitmap->number = ++bitmap_count_;
  return bitmap;
}

// Squares of two colors, so that the place of a picture that is missing is seen.
Bitmap* World::MakePlaceholder() {
  constexpr int kSide = 32;
  constexpr int kSquare = 8;
  Bitmap* bitmap = MakeBitmap(kSide, kSide);
  if (bitmap == nullptr) return nullptr;
  uint8_t* pixel = bitmap->pixels;
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x, pixel += 3) {
      const bool bright = (x / kSquare + y / kSquare) % 2 == 0;
      pixel[0] = pixel[2] = bright ? 255 : 60;
      pixel[1] = bright ? 0 : 60;
    }
  }
  return bitmap;
}

Bitmap* World::ReadBitmap(std::string_view file) {
  char path[kLongestPath];
  if (!folder_.FindMedia(file, "", path)) return nullptr;
  const std::string_view bytes = folder_.ReadWhole(path, arena_);
  PictureSize size;
  Bitmap* bitmap = nullptr;
  if (ReadPictureSize(bytes, &size)) {
    bitmap = MakeBitmap(size.width, size.height);
    if (bitmap != nullptr && !ReadPicturePixels(bytes, bitmap->pixels)) bitmap = nullptr;
  }
  folder_.GiveBack(bytes, arena_);
  if (bitmap != nullptr) bitmap->file = CopyText(arena_, path);
  return bitmap;
}

Sound* World::MakeSound(const char* path) {
  const uint32_t length = SoundLength(folder_, path, arena_);
  if (length == 0) return nullptr;
  const char* kept = KeepPath(path);
  auto* sound = kept == nullptr ? nullptr : Make<Sound>(kKorvelSound);
  if (sound == nullptr) return nullptr;
  sound->file = kept;
  sound->length_ms = length;
  return sound;
}

const char* World::KeepPath(std::string_view path) {
  for (const char* kept : paths_) {
    if (path == kept) return kept;
  }
  char* kept = static_cast<char*>(arena_.TryAllocate(path.size() + 1));
  if (kept == nullptr) return nullptr;
  std::copy(path.begin(), path.end(), kept);
  paths_.Add(kept);
  return kept;
}

bool World::FindModel(std::string_view file, Bitmap** picture, const char** kept_name) {
  char path[kLongestPath];
  if (!folder_.FindMedia(file, "", path)) return false;
  for (const Model& model : models_) {
    if (std::string_view(model.file) != path) continue;
    *picture = model.picture;
    *kept_name = model.file;
    return true;
  }
  *picture = ReadBitmap(path);
  *kept_name = CopyText(arena_, path);
  models_.Add({*kept_name, *picture, 0});
  return true;
}

Entity* World::MakeEntity(std::string_view file, const char* name) {
  Bitmap* picture = nullptr;
  const char* kept = nullptr;
  if (!FindModel(file, &picture, &kept)) return nullptr;
  auto* entity = Make<Entity>(kKorvelEntity);
  if (entity == nullptr) return nullptr;
  entity->head.flags |= kShown;
  entity->solid = true;
  entity->picture = picture;
  entity->file = kept;
  NameEntity(*entity, name);
  entity->previous = last_entity_;
  (last_entity_ != nullptr ? last_entity_->next : first_entity_) = entity;
  last_entity_ = entity;
  ++entity_count_;
  return entity;
}

void World::NameEntity(Entity& entity, const char* name) {
  if (name != nullptr) {
    entity.name = CopyText(arena_, name);
    return;
  }
  for (Model& model : models_) {
    if (model.file != entity.file) continue;
    std::string_view base = model.file;
    base.remove_prefix(base.find_last_of('/') == std::string_view::npos ? 0 : base.find_last_of('/') + 1);
    base = base.substr(0, base.find_last_of('.'));
    char text[300];
    const int length =
        std::snprintf(text, sizeof text, "%.*s_%u", static_cast<int>(std::min<size_t>(base.size(), 255)),
                      base.data(), ++model.named);
    char* memory = static_cast<char*>(arena_.TryAllocate(static_cast<size_t>(length) + 1));
    if (memory != nullptr) std::memcpy(memory, text, static_cast<size_t>(length) + 1);
    entity.name = memory;
    return;
  }
}

void World::Remove(KorvelHead* object) {
  if ((object->flags & kByScript) != 0) {
    object->flags &= static_cast<uint8_t>(~kShown);
    return;
  }
  if ((object->flags & kRemoved) != 0) return;
  object->flags |= kRemoved;
  removed_.Add(object);
}

bool World::IsRemoved(const void* object) const {
  return object != nullptr && (static_cast<const KorvelHead*>(object)->flags & kRemoved) != 0;
}

// Takes one object out of the lists, and gives its memory back.
void World::Forget(KorvelHead* object) {
  const int kind = object->kind;
  if (kind == kKorvelEntity) {
    auto* entity = reinterpret_cast<Entity*>(object);
    (entity->previous != nullptr ? entity->previous->next : first_entity_) = entity->next;
    (entity->next != nullptr ? entity->next->previous : last_entity_) = entity->previous;
    --entity_count_;
    if (entity->name != nullptr) arena_.Free(const_cast<char*>(entity->name), std::strlen(entity->name) + 1);
  } else if (kind == kKorvelString) {
    auto* string = reinterpret_cast<StringObject*>(object);
    arena_.Free(string->text, string->capacity + 1);
  } else if (kind == kKorvelBitmap) {
    auto* bitmap = reinterpret_cast<Bitmap*>(object);
    arena_.Free(bitmap->pixels,
                static_cast<size_t>(bitmap->width) * static_cast<size_t>(bitmap->height) * 3 + 16);
  } else {
    List<KorvelHead*>& list = *lists_[kind];
    uint32_t kept = 0;
    for (KorvelHead* other : list) {
      if (other != object) list[kept++] = other;
    }
    list.Resize(kept);
  }
  arena_.Free(object, SizeOf(kind));
}

void World::Sweep() {
  const auto drop = [this](auto*& pointer) {
    if (IsRemoved(pointer)) pointer = nullptr;
  };
  for (KorvelHead* head : all(kKorvelPanel)) drop(reinterpret_cast<Panel*>(head)->picture);
  for (KorvelHead* head : all(kKorvelText)) drop(reinterpret_cast<Text*>(head)->face);
  for (KorvelHead* head : all(kKorvelView)) drop(reinterpret_cast<View*>(head)->guide);
  for (Entity* entity = first_entity_; entity != nullptr; entity = entity->next) {
    drop(entity->surface);
    drop(entity->picture);
  }
  for (KorvelHead* head : removed_) Forget(head);
  removed_.Clear();
}

}  // namespace korvel
