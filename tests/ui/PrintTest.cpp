#include <gtest/gtest.h>

#include <filesystem>

#include "settings/Settings.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class Print : public ShellFixture {};

TEST_F(Print, APrinterThatIsChosenGetsTheTextAndNoneGetsNothing) {
  Start();
  Type("var a;");
  const std::string paper = m_folder.Path("paper.pdf");
  m_prompts.ExpectFile("");
  Press("Ctrl+P");
  EXPECT_FALSE(std::filesystem::exists(paper));
  m_prompts.ExpectFile(paper);
  Press("Ctrl+P");
  EXPECT_GT(std::filesystem::file_size(paper), 0u);
}

TEST_F(Print, ThePageIsSetUpFromTheMarginsThatWereSetLast) {
  Start();
  m_prompts.ExpectMargins(std::nullopt);
  Choose("File > Page Setup");
  EXPECT_EQ(m_prompts.LastMargins().top, 1000);
  m_prompts.ExpectMargins(PageMargins{10, 20, 30, 40});
  Choose("File > Page Setup");
  m_prompts.ExpectMargins(std::nullopt);
  Choose("File > Page Setup");
  const PageMargins& shown = m_prompts.LastMargins();
  EXPECT_EQ((std::vector{shown.left, shown.right, shown.top, shown.bottom}), (std::vector{10, 20, 30, 40}));
}

}  // namespace
}  // namespace quill
