#include "res/ui/UiText.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

TEST(UiText, NamesOfAnyBytesComeBackWhole) {
  const std::string names[] = {
      "plain",        "\xC3\xA4\xF0\x9F\x98\x80", "latin \xE4\xF6.vsl", "\xED\xB2\x80",
      "cut \xE2\x82", std::string("\xFF\xFE\x80")};
  for (const std::string& name : names) EXPECT_EQ(ToBytes(FromBytes(name)), name);
  EXPECT_EQ(FromBytes("\xC3\xA4"), QString(QChar(0xE4)));
}

}  // namespace
}  // namespace quill
