// Numbers and angles.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

Value Abs(Session&, const Value* a) {
  return Cut(a[0] < 0 ? -a[0] : a[0]);
}
Value Sign(Session&, const Value* a) {
  return a[0] > 0 ? kOne : a[0] < 0 ? -kOne : 0;
}
Value Min(Session&, const Value* a) {
  return std::min(a[0], a[1]);
}
Value Max(Session&, const Value* a) {
  return std::max(a[0], a[1]);
}

Value Clamp(Session&, const Value* a) {
  if (a[1] > a[2]) return a[1];
  return std::clamp(a[0], a[1], a[2]);
}

Value FloorOf(Session&, const Value* a) {
  return GiveWhole(Whole(a[0]));
}
Value Ceil(Session&, const Value* a) {
  return Cut((a[0] + kOne - 1) >> kFractionBits << kFractionBits);
}

Value Round(Session&, const Value* a) {
  const Value size = ((a[0] < 0 ? -a[0] : a[0]) + kOne / 2) >> kFractionBits << kFractionBits;
  return Cut(a[0] < 0 ? -size : size);
}

Value Frac(Session&, const Value* a) {
  return a[0] % kOne;
}

Value Sqrt(Session& s, const Value* a) {
  if (a[0] >= 0) return GiveReal(std::sqrt(Real(a[0])));
  s.Fault("The square root of a negative number gives 0.");
  return 0;
}

Value Pow(Session&, const Value* a) {
  const double base = Real(a[0]);
  const double exponent = Real(a[1]);
  if (base == 0) return exponent == 0 ? kOne : exponent < 0 ? kLargest : 0;
  if (base < 0 && exponent != std::floor(exponent)) return 0;
  return GiveReal(std::pow(base, exponent));
}

Value Exp(Session&, const Value* a) {
  return GiveReal(std::exp(Real(a[0])));
}

Value Log(Session& s, const Value* a) {
  if (a[0] > 0) return GiveReal(std::log(Real(a[0])));
  s.Fault("Zero and negative numbers have no logarithm.");
  return kSmallest;
}

Value Sin(Session&, const Value* a) {
  return GiveReal(std::sin(std::fmod(Real(a[0]), 360) * kDegree));
}
Value Cos(Session&, const Value* a) {
  return GiveReal(std::cos(std::fmod(Real(a[0]), 360) * kDegree));
}

Value Tan(Session&, const Value* a) {
  const double angle = NormalAngle(Real(a[0]));
  if (angle == 90 || angle == -90) return angle > 0 ? kLargest : kSmallest;
  return GiveReal(std::tan(angle * kDegree));
}

Value Asin(Session&, const Value* a) {
  return GiveReal(std::asin(std::clamp(Real(a[0]), -1.0, 1.0)) / kDegree);
}
Value Acos(Session&, const Value* a) {
  return GiveReal(std::acos(std::clamp(Real(a[0]), -1.0, 1.0)) / kDegree);
}

Value Atan2(Session&, const Value* a) {
  if (a[0] == 0 && a[1] == 0) return 0;
  return GiveReal(std::atan2(Real(a[0]), Real(a[1])) / kDegree);
}

Value AngleNorm(Session&, const Value* a) {
  return GiveReal(NormalAngle(Real(a[0])));
}
Value AngleDiff(Session&, const Value* a) {
  return GiveReal(NormalAngle(Real(a[1]) - Real(a[0])));
}

Value Lerp(Session&, const Value* a) {
  return GiveReal(Real(a[0]) + (Real(a[1]) - Real(a[0])) * Real(a[2]));
}

// Brings a value into a range that goes round: from low up to, but without, high.
Value Wrap(Session&, const Value* a) {
  const Value span = a[2] - a[1];
  if (span <= 0) return a[1];
  const Value rest = (a[0] - a[1]) % span;
  return Cut(a[1] + (rest < 0 ? rest + span : rest));
}

uint32_t NextRandom(Session& s) {
  s.random = s.random * 1664525u + 1013904223u;
  return s.random;
}

Value RandomBelow(Session& s, int64_t steps) {
  return static_cast<Value>((static_cast<int64_t>(NextRandom(s) >> 11) * steps) >> 21);
}

Value Random(Session& s, const Value* a) {
  return a[0] <= 0 ? 0 : RandomBelow(s, a[0]);
}

Value RandomInt(Session& s, const Value* a) {
  const int64_t low = Whole(a[0]);
  const int64_t high = Whole(a[1]);
  if (low > high) return GiveWhole(low);
  return GiveWhole(low + RandomBelow(s, high - low + 1));
}

Value RandomSeed(Session& s, const Value* a) {
  s.random = static_cast<uint32_t>(Whole(a[0]));
  return 0;
}

constexpr Command kRows[] = {
    {"abs", "n:n", Abs},
    {"sign", "n:n", Sign},
    {"min", "n:nn", Min},
    {"max", "n:nn", Max},
    {"clamp", "n:nnn", Clamp},
    {"floor", "n:n", FloorOf},
    {"ceil", "n:n", Ceil},
    {"round", "n:n", Round},
    {"frac", "n:n", Frac},
    {"sqrt", "n:n", Sqrt},
    {"pow", "n:nn", Pow},
    {"exp", "n:n", Exp},
    {"log", "n:n", Log},
    {"sin", "n:n", Sin},
    {"cos", "n:n", Cos},
    {"tan", "n:n", Tan},
    {"asin", "n:n", Asin},
    {"acos", "n:n", Acos},
    {"atan2", "n:nn", Atan2},
    {"angle_norm", "n:n", AngleNorm},
    {"angle_diff", "n:nn", AngleDiff},
    {"lerp", "n:nnn", Lerp},
    {"wrap", "n:nnn", Wrap},
    {"random", "n:n", Random},
    {"random_int", "n:nn", RandomInt},
    {"random_seed", "-:n", RandomSeed},
};

}  // namespace

const CommandTable kMathCommands = TableOf(kRows);

}  // namespace korvel
