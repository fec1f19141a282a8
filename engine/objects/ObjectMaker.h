// What the compiler asks of the world.
#pragma once

#include <string_view>

#include "engine/korvel.h"
#include "engine/language/Names.h"

namespace korvel {

/// Who makes the objects that a script defines.
class ObjectMaker {
 public:
  /// A new object of a kind with its usual values, defined by the script.
  virtual void* MakeObject(int kind, Name* name) = 0;
  /// A string that nobody may change, for a text in quotes.
  virtual void* MakeLiteral(std::string_view text) = 0;
  virtual void SetString(void* string, std::string_view text) = 0;
  /// A member that holds an object, or a file or text that becomes one.
  virtual void SetObjectMember(void* object, const KorvelMember& member, void* value) = 0;
  /// The file of a bitmap, sound or entity. A missing one is told by false; the object then stays empty.
  virtual bool SetFile(void* object, std::string_view file, const char* folder) = 0;
  virtual void SetFont(void* font, std::string_view face, int height) = 0;
  virtual void SetTextLines(void* text, uint32_t count) = 0;
  virtual void SetTextLine(void* text, uint32_t line, std::string_view content) = 0;
  /// The view that is there without a definition.
  virtual void* camera() = 0;

 protected:
  ~ObjectMaker() = default;
};

}  // namespace korvel
