// What a host and an engine library named korvel.dll agree on: the exported functions, and where the members
// of objects lie that engine_getobj gives. A host includes this file and nothing else of the engine.
//
// A number of a script is a signed 32-bit integer that counts steps of 1/1024. Each number is one aligned
// cell that is read and written whole, so a host may read and write it while the engine thread runs.
// Everything that an address points to stays readable until engine_close or the next engine_open.
#pragma once

#include <stddef.h>
#include <stdint.h>

#define KORVEL_EXPORT __attribute__((visibility("default")))

extern "C" {
/// Begins a session with a command line: the main script's file name, then options that begin with " -".
/// What an earlier session left behind, ended in order or by force, is given back. The second argument is
/// null. Returns a handle, or null when there is no memory. Errors of the script end the session in its first
/// frame.
KORVEL_EXPORT void* engine_open(const char* command_line, void* reserved);

/// Runs one frame. Returns 0 when the game has ended; while the debugger has stopped it, nothing goes on.
KORVEL_EXPORT int engine_frame(void);

/// Ends the session.
KORVEL_EXPORT void engine_close(void);

/// The address of an object or of a number, by its name whatever its case, or null.
KORVEL_EXPORT void* engine_getobj(const char* name);

/// The address of a function, or null.
KORVEL_EXPORT void* engine_getfunc(const char* name);

/// A new string object with this content, or null.
KORVEL_EXPORT void* _str(const char* content);

/// Sets (1) or clears (0) a breakpoint. The file is a bare name, lines count from 1. A line without code
/// stands for the next one of its file that has some. Returns 0 when there is no such line or file.
KORVEL_EXPORT int engine_debugbreakpoint(const char* file, int line, int set);

/// Where the script was stopped last: a bare file name, 0, and a line from 1. The name is null when it never
/// was, or runs on freely. Any pointer may be null.
KORVEL_EXPORT void engine_debugposition(const char** file, int* reserved, int* line);

/// Optional: the kind of what engine_getobj gave, 0 for a number. Its bits alone could look like an object's.
KORVEL_EXPORT int engine_kind(const void* address);

/// Optional: who takes the lines of print and the debug commands, on the engine thread; null is standard
/// output.
KORVEL_EXPORT void engine_setoutput(void (*take)(const char* line));
}

/// The kind of an object, in the byte at offset 3.
enum KorvelKind {
  kKorvelNumber = 0,
  kKorvelFunction = 1,
  kKorvelEntityPointer = 5,
  kKorvelSound = 6,
  kKorvelBitmap = 7,
  kKorvelEntity = 8,
  kKorvelPanel = 9,
  kKorvelText = 10,
  kKorvelFont = 11,
  kKorvelView = 12,
  kKorvelScreenEntity = 20,  ///< defined by `entity`: it lies before the picture, not in the level
  kKorvelString = 21,
  kKorvelMaterial = 22,
  kKorvelSky = 23,
  kKorvelWindow = 24,
};

/// The first four bytes of every object.
struct KorvelHead {
  uint8_t flags;
  uint8_t reserved[2];
  int8_t kind;
};

/// How a member is stored.
enum KorvelEncoding {
  kKorvelFixed,    ///< 32 bits, steps of 1/1024
  kKorvelInteger,  ///< 32 bits, a whole number
  kKorvelObject,   ///< a pointer to an object, or null
  kKorvelStrings,  ///< a pointer to `lines` pointers to strings
};

/// What a script may do with a member.
enum KorvelAccess { kKorvelWritable, kKorvelReadOnly, kKorvelDefinitionOnly };

/// One member of a kind of object. The range is in steps of 1/1024; equal ends stand for no range.
struct KorvelMember {
  const char* name;
  uint16_t offset;
  uint8_t encoding;
  uint8_t access;
  uint8_t begins_vector;  ///< it and the next two are a vector
  int32_t low;
  int32_t high;
};

struct KorvelEntityPointerObject {
  KorvelHead head;
  uint32_t reserved;
  struct KorvelEntityObject* target;
};

struct KorvelStringObject {
  KorvelHead head;
  uint32_t length;
  char* text;  ///< ends with a zero byte
};

struct KorvelBitmapObject {
  KorvelHead head;
  int32_t width, height;  ///< pixels
  int32_t bytes_per_pixel;
};

struct KorvelFontObject {
  KorvelHead head;
  int32_t width, height;  ///< pixels of one character
  int32_t characters, characters_per_line;
};

struct KorvelPanelObject {
  KorvelHead head;
  int32_t pos_x, pos_y, scale_x, scale_y, alpha, layer;
  KorvelBitmapObject* picture;
};

struct KorvelTextObject {
  KorvelHead head;
  int32_t pos_x, pos_y, scale_x, scale_y, red, green, blue, alpha, layer, lines, length;
  KorvelFontObject* face;
  KorvelStringObject** strings;
};

struct KorvelMaterialObject {
  KorvelHead head;
  int32_t red, green, blue, ambient, albedo;
};

struct KorvelSkyObject {
  KorvelHead head;
  int32_t red, green, blue, layer, stars, pan, tilt;
};

struct KorvelWindowObject {
  KorvelHead head;
  int32_t size_x, size_y, red, green, blue;
  KorvelStringObject* title;
};

struct KorvelViewObject {
  KorvelHead head;
  int32_t x, y, z, pan, tilt, roll;
  int32_t pos_x, pos_y, size_x, size_y, offset_x, offset_y;
  int32_t portal_x, portal_y, portal_z;
  int32_t fov, ambient, fog, fog_start, fog_end, alpha, layer;
};

struct KorvelEntityObject {
  KorvelHead head;
  int32_t x, y, z, pan, tilt, roll, scale_x, scale_y, scale_z;
  int32_t red, green, blue, alpha, ambient, albedo, layer;
  int32_t skills[20];
  KorvelMaterialObject* surface;
};

/// The members of one kind of object.
struct KorvelLayout {
  int kind;
  const KorvelMember* members;
  size_t count;
};

/// The layouts of all kinds that have members; a defined entity has that of an entity.
inline const KorvelLayout* korvel_layout(int kind);

#include "engine/korvel_layouts.inc"
