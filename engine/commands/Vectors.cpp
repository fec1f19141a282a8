// Three numbers at a time.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {

namespace {

Value VecFill(Session&, const Value* a) {
  auto* cells = reinterpret_cast<Fixed*>(a[0]);
  for (int i = 0; i < 3; ++i) WriteCell(cells + i, Number(a[i + 1]));
  return 0;
}

Value VecCopy(Session&, const Value* a) {
  Fixed numbers[3];
  std::memcpy(numbers, reinterpret_cast<const void*>(a[1]), sizeof numbers);
  for (int i = 0; i < 3; ++i) WriteCell(reinterpret_cast<Fixed*>(a[0]) + i, numbers[i]);
  return 0;
}

Value Combine(const Value* a, int sign) {
  auto* cells = reinterpret_cast<Fixed*>(a[0]);
  const auto* other = reinterpret_cast<const Fixed*>(a[1]);
  Fixed sums[3];
  for (int i = 0; i < 3; ++i) sums[i] = Cut(int64_t{cells[i]} + sign * int64_t{other[i]});
  for (int i = 0; i < 3; ++i) WriteCell(cells + i, sums[i]);
  return 0;
}

Value VecAdd(Session&, const Value* a) {
  return Combine(a, 1);
}
Value VecSub(Session&, const Value* a) {
  return Combine(a, -1);
}

Value VecScale(Session&, const Value* a) {
  auto* cells = reinterpret_cast<Fixed*>(a[0]);
  for (int i = 0; i < 3; ++i) WriteCell(cells + i, Cut(MultiplySteps(cells[i], Number(a[1]))));
  return 0;
}

Value VecLength(Session&, const Value* a) {
  return GiveReal(Length(ReadVector(a[0])));
}

Value VecDistance(Session&, const Value* a) {
  const Triple p = ReadVector(a[0]);
  const Triple q = ReadVector(a[1]);
  return GiveReal(Length({p.x - q.x, p.y - q.y, p.z - q.z}));
}

Value VecDot(Session&, const Value* a) {
  const Triple p = ReadVector(a[0]);
  const Triple q = ReadVector(a[1]);
  return GiveReal(p.x * q.x + p.y * q.y + p.z * q.z);
}

Value VecCross(Session&, const Value* a) {
  const Triple p = ReadVector(a[1]);
  const Triple q = ReadVector(a[2]);
  WriteVector(a[0], {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x});
  return 0;
}

Value VecNormalize(Session&, const Value* a) {
  const Triple v = ReadVector(a[0]);
  const double length = Length(v);
  if (length > 0) {
    const double factor = Real(a[1]) / length;
    WriteVector(a[0], {v.x * factor, v.y * factor, v.z * factor});
  }
  return GiveReal(length);
}

Value VecLerp(Session&, const Value* a) {
  const Triple p = ReadVector(a[1]);
  const Triple q = ReadVector(a[2]);
  const double share = Real(a[3]);
  WriteVector(a[0], {p.x + (q.x - p.x) * share, p.y + (q.y - p.y) * share, p.z + (q.z - p.z) * share});
  return 0;
}

Value VecRotate(Session&, const Value* a) {
  WriteVector(a[0], Rotate(ReadVector(a[0]), ReadVector(a[1])));
  return 0;
}

Value VecToAngles(Session&, const Value* a) {
  const Triple direction = ReadVector(a[1]);
  WriteVector(a[0], AnglesOf(direction));
  return GiveReal(Length(direction));
}

constexpr Command kRows[] = {
    {"vec_fill", "-:Vnnn", VecFill},
    {"vec_copy", "-:Vv", VecCopy},
    {"vec_add", "-:Vv", VecAdd},
    {"vec_sub", "-:Vv", VecSub},
    {"vec_scale", "-:Vn", VecScale},
    {"vec_length", "n:v", VecLength},
    {"vec_distance", "n:vv", VecDistance},
    {"vec_dot", "n:vv", VecDot},
    {"vec_cross", "-:Vvv", VecCross},
    {"vec_normalize", "n:Vn", VecNormalize},
    {"vec_lerp", "-:Vvvn", VecLerp},
    {"vec_rotate", "-:Vv", VecRotate},
    {"vec_to_angles", "n:Vv", VecToAngles},
};

}  // namespace

const CommandTable kVectorCommands = TableOf(kRows);

}  // namespace korvel
