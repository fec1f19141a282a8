// All objects of a session: those that the script defines and those that it makes while it runs.
#pragma once

#include "engine/files/GameFolder.h"
#include "engine/objects/ObjectMaker.h"
#include "engine/objects/Objects.h"

namespace korvel {

class World : public ObjectMaker {
 public:
  World(Arena& arena, GameFolder& folder);

  // What the compiler asks for.
  void* MakeObject(int kind, Name* name) override;
  void* MakeLiteral(std::string_view text) override;
  void SetString(void* string, std::string_view text) override;
  void SetObjectMember(void* object, const KorvelMember& member, void* value) override;
  bool SetFile(void* object, std::string_view file, const char* folder) override;
  void SetFont(void* font, std::string_view face, int height) override;
  void SetTextLines(void* text, uint32_t count) override;
  void SetTextLine(void* text, uint32_t line, std::string_view content) override;
  void* camera() override { return camera_; }

  /// A new object with its usual values, or null when there is no more memory for the script.
  template <class T>
  T* Make(int kind) {
    return static_cast<T*>(MakeAny(kind, sizeof(T)));
  }

  /// Gives a string another content; what is beyond the longest is dropped. Returns false without memory.
  bool Assign(StringObject& string, std::string_view text);
  bool Append(StringObject& string, std::string_view text);

  /// Gives a text this number of empty lines.
  bool MakeLines(Text& text, uint32_t count);

  /// Brings the member length up to date.
  static void CountCharacters(Text& text);

  /// A new entity in the level, or null when its file is missing or memory is.
  Entity* MakeEntity(std::string_view file, const char* name);

  /// The picture of a file, read once; null when it cannot be read. Empty for files that are no pictures.
  bool FindModel(std::string_view file, Bitmap** picture, const char** kept_name);

  /// A bitmap of this size, black; null without memory.
  Bitmap* MakeBitmap(int width, int height);

  Bitmap* MakePlaceholder();

  /// Reads a picture into a new bitmap; null when it cannot be read.
  Bitmap* ReadBitmap(std::string_view file);

  /// A new sound of a file; null when it is none that can be read.
  Sound* MakeSound(const char* path);

  /// The same path in memory that stays; null without memory.
  const char* KeepPath(std::string_view path);

  /// Marks an object as gone at the end of the frame; one that the script defines is hidden.
  void Remove(KorvelHead* object);

  /// The objects marked as gone, in the order of their addresses.
  List<KorvelHead*>& removed() { return removed_; }
  bool IsRemoved(const void* object) const;
  /// Takes the removed objects out of all other objects, and their memory back.
  void Sweep();

  Entity* first_entity() const { return first_entity_; }
  uint32_t entity_count() const { return entity_count_; }
  /// Objects of a kind, in the order in which they were made.
  const List<KorvelHead*>& all(int kind) const { return *lists_[kind]; }
  List<KorvelHead*>& all(int kind) { return *lists_[kind]; }

 private:
  void* MakeAny(int kind, size_t bytes);
  void SetUsual(KorvelHead* object);
  void Forget(KorvelHead* object);
  static size_t SizeOf(int kind);
  void NameEntity(Entity& entity, const char* name);

  Arena& arena_;
  GameFolder& folder_;
  View* camera_ = nullptr;
  Entity* first_entity_ = nullptr;
  Entity* last_entity_ = nullptr;
  uint32_t entity_count_ = 0;
  uint32_t bitmap_count_ = 0;
  List<KorvelHead*>* lists_[25] = {};
  List<KorvelHead*> removed_;
  struct Model {
    const char* file;
    Bitmap* picture;
    uint32_t named;  ///< how many entities were named after it
  };
  List<Model> models_;
  List<const char*> paths_;
};

}  // namespace korvel
