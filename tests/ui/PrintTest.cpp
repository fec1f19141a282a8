#include <gtest/gtest.h>

#include <QTest>
#include <filesystem>
#include <regex>

#include "settings/Settings.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "support/FileSizeLimit.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

constexpr int kLongMs = 30'000;
constexpr int kManyLines = 1500;

class Print : public ScreenFixture {
 protected:
  Print() { std::filesystem::create_directory(m_folder.Path("out")); }

  std::string Paper() const { return m_folder.Path("out/paper.pdf"); }
  std::string OnPaper() const { return m_folder.Read("out/paper.pdf"); }
  /// The document as printed, without what tells when that was.
  std::string Printed() const {
    return std::regex_replace(OnPaper(), std::regex("/CreationDate[^\n]*|/ID[^\n]*"), "");
  }
  /// How many files there are beside the printed one.
  size_t FilesBeside() const {
    const std::filesystem::directory_iterator files(m_folder.Path("out"));
    return static_cast<size_t>(std::distance(begin(files), end(files))) -
           (std::filesystem::exists(Paper()) ? 1 : 0);
  }
  void OpenLong() {
    std::string text;
    for (int i = 0; i < kManyLines; ++i) text += "vec_set(me.x, " + std::to_string(i) + "); // a comment\r\n";
    Open("main.vsl", text);
  }
  void Begin() {
    m_prompts.ExpectFile(Paper());
    Press("Ctrl+P");
  }
  /// Waits until the progress tells of pages.
  void WaitForPages() {
    bool seen = false;
    m_prompts.OnProgress([&](const std::string& text) { seen = seen || text.find(": page ") != text.npos; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return seen || !m_prompts.ShowsProgress(); }, kLongMs));
    m_prompts.OnProgress({});
    EXPECT_TRUE(m_prompts.ShowsProgress()) << "printed before it was looked at";
  }
  void WaitForEnd() {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_prompts.ShowsProgress(); }, kLongMs));
  }
};

TEST_F(Print, APrinterThatIsChosenGetsTheTextAndNoneGetsNothing) {
  Start();
  Type("var a;");
  m_prompts.ExpectFile("");
  Press("Ctrl+P");
  EXPECT_FALSE(m_prompts.ShowsProgress());
  EXPECT_FALSE(std::filesystem::exists(Paper()));
  Begin();
  WaitForEnd();
  EXPECT_TRUE(OnPaper().starts_with("%PDF"));
  EXPECT_TRUE(OnPaper().ends_with("%%EOF\n"));
  EXPECT_EQ(Message(), "\"Untitled1\" was printed.");
  EXPECT_EQ(FilesBeside(), 0U);
}

TEST_F(Print, ACancelledPrintingLeavesTheOldFileAndNothingElse) {
  m_folder.Write("out/paper.pdf", "old");
  Start();
  OpenLong();
  for (int time = 0; time < 2; ++time) {
    Begin();
    if (time > 0) WaitForPages();
    EXPECT_EQ(OnPaper(), "old");
    m_prompts.CancelProgress();
    Pump();
    EXPECT_FALSE(m_prompts.ShowsProgress());
    EXPECT_EQ(Message(), "The printing of \"main.vsl\" was cancelled.");
    EXPECT_EQ(OnPaper(), "old");
    EXPECT_EQ(FilesBeside(), 0U);
  }
  Begin();
  WaitForEnd();
  EXPECT_TRUE(OnPaper().ends_with("%%EOF\n"));
}

TEST_F(Print, OneIsPrintedAtATime) {
  Start();
  OpenLong();
  Begin();
  Press("Ctrl+P");
  EXPECT_EQ(Message(),
            "A document is being printed. Another one can be printed when it is finished or cancelled.");
  EXPECT_FALSE(Choose("File > Print to PDF"));
  WaitForPages();
  EXPECT_FALSE(Choose("File > Print"));
  m_prompts.CancelProgress();
  m_prompts.ExpectFile("");
  EXPECT_TRUE(Choose("File > Print"));
}

TEST_F(Print, WhatIsPrintedIsTheTextAsItWas) {
  Start();
  OpenLong();
  Begin();
  WaitForEnd();
  const std::string undisturbed = Printed();
  Begin();
  WaitForPages();
  View().SelectAll();
  Press("Delete");
  View().SetZoom(200);
  EXPECT_EQ(ActiveText(), "");
  WaitForEnd();
  EXPECT_TRUE(Printed() == undisturbed) << "edited while it was printed";
  Press("Ctrl+Z");
  Begin();
  WaitForPages();
  Press("Ctrl+W");
  EXPECT_EQ(Tabs(), "");
  WaitForEnd();
  EXPECT_TRUE(Printed() == undisturbed) << "closed while it was printed";
}

TEST_F(Print, AFailureSaysWhatStoodInTheWay) {
  Start();
  OpenLong();
  m_prompts.ExpectFile(m_folder.Path("out"));
  m_prompts.Expect("The document could not be printed.", Prompts::Answer::kOk);
  Choose("File > Print to PDF");
  EXPECT_NE(m_prompts.LastDetail().find(m_folder.Path("out")), std::string::npos) << m_prompts.LastDetail();
  m_folder.Write("out/paper.pdf", "old");
  {
    const FileSizeLimit full(4096);
    Begin();
    m_prompts.Expect("The document could not be printed.", Prompts::Answer::kOk);
    WaitForEnd();
  }
  EXPECT_NE(m_prompts.LastDetail().find(Paper()), std::string::npos) << m_prompts.LastDetail();
  EXPECT_EQ(OnPaper(), "old");
  EXPECT_EQ(FilesBeside(), 0U);
}

TEST_F(Print, TheEditorClosesOnlyWhenThePrintingMayStop) {
  const char* const kQuestion =
      "\"main.vsl\" is still being printed. Do you want to stop printing and close the editor?";
  m_folder.Write("out/paper.pdf", "old");
  Start();
  OpenLong();
  Begin();
  WaitForPages();
  m_prompts.Expect(kQuestion, Prompts::Answer::kNo);
  EXPECT_FALSE(Frame().close());
  EXPECT_EQ(Tabs(), "[main.vsl]");
  EXPECT_TRUE(m_prompts.ShowsProgress());
  m_prompts.Expect(kQuestion, Prompts::Answer::kYes);
  Quit();
  EXPECT_FALSE(m_prompts.ShowsProgress());
  EXPECT_EQ(OnPaper(), "old");
  EXPECT_EQ(FilesBeside(), 0U);
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
