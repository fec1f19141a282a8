#include "engine/language/Errors.h"

#include <cstdio>

namespace korvel {
namespace {

constexpr uint32_t kMostFaults = 1000;
constexpr size_t kLongest = 1000;

}  // namespace

bool Errors::IsNew(Place place, std::string_view sentence) {
  uint64_t hash = 14695981039346656037u;
  const auto mix = [&hash](uint64_t value) { hash = (hash ^ value) * 1099511628211u; };
  mix(place.line);
  // A file that is included twice is one place.
  for (char c : std::string_view(place.file != nullptr ? place.file->name : "")) mix(static_cast<uint8_t>(c));
  for (char c : sentence) mix(static_cast<uint8_t>(c));
  uint32_t& first = first_[(hash >> 32) & 255];
  for (uint32_t i = first; i != 0; i = seen_[i - 1].next) {
    if (seen_[i - 1].hash == hash) return false;
  }
  seen_.Add({hash, first});
  first = seen_.size();
  return true;
}

void Errors::Write(Place place, std::string_view sentence) {
  char line[kLongest + 400];
  int length = 0;
  if (place.file != nullptr) {
    length = std::snprintf(line, sizeof line, "%.300s(%u): ", place.file->name, place.line);
  }
  length += std::snprintf(line + length, sizeof line - static_cast<size_t>(length), "Error: %.*s",
                          static_cast<int>(sentence.size()), sentence.data());
  for (int i = 0; i < length; ++i) {
    if (line[i] == '\n' || line[i] == '\r') line[i] = ' ';
  }
  sink_.TakeEntry({line, static_cast<size_t>(length)});
}

void Errors::Add(Place place, const char* format, ...) {
  if (count_ >= kMostErrors) {
    ++count_;
    return;
  }
  char sentence[kLongest];
  va_list values;
  va_start(values, format);
  std::vsnprintf(sentence, sizeof sentence, format, values);
  va_end(values);
  if (!IsNew(place, sentence)) return;
  ++count_;
  Write(place, sentence);
}

void Errors::Fault(Place place, std::string_view sentence) {
  if (faults_ > kMostFaults) return;
  sentence = sentence.substr(0, kLongest - 1);
  if (!IsNew(place, sentence)) return;
  ++faults_;
  Write(place, faults_ > kMostFaults ? "There are more errors; they are not listed." : sentence);
}

}  // namespace korvel
