#include "res/PcxImage.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

struct Form {
  int bits, planes, bytesPerLine;
};

std::string Header(int width, int height, Form form) {
  std::string bytes(128, '\0');
  const auto word = [&bytes](size_t offset, int value) {
    bytes[offset] = static_cast<char>(value & 0xFF);
    bytes[offset + 1] = static_cast<char>(value >> 8 & 0xFF);
  };
  bytes[0] = 0x0A;
  bytes[1] = 5;
  bytes[2] = 1;
  bytes[3] = static_cast<char>(form.bits);
  word(8, width - 1);
  word(10, height - 1);
  bytes[65] = static_cast<char>(form.planes);
  word(66, form.bytesPerLine);
  return bytes;
}

TEST(PcxImage, RunsPlanesAndPalettesGiveTheirColours) {
  std::string palette(769, '\0');
  palette[0] = 0x0C;
  palette.replace(1 + 3 * 7, 3, "\x11\x22\x33");
  const auto indexed = DecodePcx(Header(3, 1, {8, 1, 4}) + "\xC2\x07" + std::string(2, '\0') + palette);
  ASSERT_TRUE(indexed);
  EXPECT_EQ(indexed->pixels, (std::vector<uint32_t>{0xFF112233, 0xFF112233, 0xFF000000}));

  const auto trueColour = DecodePcx(Header(2, 1, {8, 3, 2}) + "\x01\x02\x03\x04\xC1\xFF\x06");
  ASSERT_TRUE(trueColour);
  EXPECT_EQ(trueColour->pixels, (std::vector<uint32_t>{0xFF0103FF, 0xFF020406}));

  std::string sixteen = Header(2, 1, {1, 4, 1});
  sixteen.replace(16 + 3 * 9, 3, "\x80\x81\x82");  // planes 0 and 3
  const auto planes = DecodePcx(sixteen + std::string("\x40\x00\x00\x40", 4));
  ASSERT_TRUE(planes);
  EXPECT_EQ(planes->At(1, 0), 0xFF808182U);

  const auto mono = DecodePcx(Header(2, 1, {1, 1, 1}) + "\x40");
  ASSERT_TRUE(mono);
  EXPECT_EQ(mono->pixels, (std::vector<uint32_t>{0xFF000000, 0xFFFFFFFF}));
}

TEST(PcxImage, ABrokenFileGivesWhatThereIsOrNothing) {
  const std::string good = Header(2, 2, {8, 1, 2}) + "\x01\x02\x03\x04";
  for (size_t length = 0; length < good.size(); ++length) {
    EXPECT_EQ(DecodePcx(good.substr(0, length)).has_value(), length >= 128) << length;
  }
  EXPECT_FALSE(DecodePcx(Header(65536, 65536, {8, 1, 65535}) + "\x01")) << "more than a file can hold";
  EXPECT_FALSE(DecodePcx(Header(0, 1, {8, 1, 2})));
  EXPECT_FALSE(DecodePcx(Header(9, 1, {1, 1, 1}) + "\x01")) << "a row wider than its bytes";
  EXPECT_FALSE(DecodePcx(Header(2, 2, {4, 1, 2}) + "\x01")) << "an unknown form";
  EXPECT_TRUE(DecodePcx(good + "\xFF")) << "a run without its value";
}

}  // namespace
}  // namespace quill
