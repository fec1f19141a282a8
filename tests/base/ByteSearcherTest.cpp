#include "base/ByteSearcher.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>

#include "base/CodePage1252.h"

namespace quill {
namespace {

size_t NaiveFind(std::string_view text, std::string_view what, bool matchCase) {
  if (what.empty()) return ByteSearcher::kNone;
  return matchCase ? text.find(what) : cp1252::ToUpper(text).find(cp1252::ToUpper(what));
}

TEST(ByteSearcher, FindsWhatANaiveSearchFinds) {
  std::mt19937 random(5);
  // Few different bytes, so that near misses and repeats abound; among them pairs whose cases differ in
  // other bits than ASCII's.
  const std::string_view bytes = "aAbBcC \xE4\xC4\xFF\x9F\xBF\x9A\x8A[{_";
  const auto randomBytes = [&](size_t length, size_t kinds) {
    std::string text;
    for (size_t i = 0; i < length; ++i) text += bytes[random() % kinds];
    return text;
  };
  for (int round = 0; round < 20000; ++round) {
    const size_t kinds = round % 2 == 0 ? 3 : bytes.size();
    const std::string text = randomBytes(random() % (round % 10 == 0 ? 400 : 40), kinds);
    std::string what = randomBytes(random() % 6, kinds);
    if (random() % 2 == 0 && !text.empty()) what = text.substr(random() % text.size(), random() % 50);
    const bool matchCase = random() % 2 == 0;
    // A copy of exactly this size, so that a sanitizer sees a read beyond the text.
    const auto exact = std::make_unique<char[]>(text.size());
    std::copy(text.begin(), text.end(), exact.get());
    EXPECT_EQ(ByteSearcher(what, matchCase).Find({exact.get(), text.size()}),
              NaiveFind(text, what, matchCase))
        << "\"" << what << "\" in \"" << text << "\"" << (matchCase ? ", case" : "");
    // The bytes behind the text would complete a match.
    const std::string padded = text + what + std::string(ByteSearcher::kReadable, 'a');
    const size_t from = random() % (text.size() + 2);
    const size_t naive =
        from > text.size() ? ByteSearcher::kNone : NaiveFind(text.substr(from), what, matchCase);
    EXPECT_EQ(ByteSearcher(what, matchCase).FindPadded(padded.data(), text.size(), from),
              naive == ByteSearcher::kNone ? naive : from + naive)
        << "\"" << what << "\" in \"" << text << "\" from " << from;
  }
}

}  // namespace
}  // namespace quill
