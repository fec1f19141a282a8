// The rows of Find in Files: what they say, to the eye and to a screen reader, and what they open.
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class GrepRows : public ScreenFixture {
 protected:
  GrepRows() { std::filesystem::create_directories(m_folder.Path("game/deep")); }

  QDialog& Dialog() {
    for (auto* dialog : Frame().findChildren<QDialog*>()) {
      if (dialog->windowTitle() == "Find in Files") return *dialog;
    }
    throw std::runtime_error("no dialog");
  }
  QListView& Rows() { return *Dialog().findChild<QListView*>(); }
  QComboBox& Folder() { return *Dialog().findChildren<QComboBox*>()[0]; }
  QComboBox& What() { return *Dialog().findChildren<QComboBox*>()[1]; }
  void Find(const std::string& folder, const std::string& what) {
    QApplication::setActiveWindow(&Frame());
    View().setFocus();
    Press("Ctrl+Shift+F");
    Folder().setFocus();
    Press("Ctrl+A");
    Type(folder);
    What().setFocus();
    Press("Ctrl+A");
    Type(what);
    Press("Return");
  }
  /// The text of the label that a screen reader reads out for the object.
  static std::string LabelOf(QAccessibleInterface* object) {
    if (object == nullptr) return "none";
    const auto labels = object->relations(QAccessible::Label);
    return labels.isEmpty() ? "none" : ToBytes(labels.first().first->text(QAccessible::Name));
  }
  std::string Summary() {
    for (const auto* label : Dialog().findChildren<QLabel*>()) {
      if (label->text().contains(" files")) return ToBytes(label->text());
    }
    return {};
  }
  QPoint MiddleOf(int row) { return Rows().visualRect(Rows().model()->index(row, 0)).center(); }
  /// How dark a part of a row is.
  int64_t Ink(int row, int from, int width) {
    const QRect area = Rows().visualRect(Rows().model()->index(row, 0));
    const QImage image = Rows().viewport()->grab(area).toImage();
    int64_t ink = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = from; x < std::min(from + width, image.width()); ++x)
        ink += 255 - qGray(image.pixel(x, y));
    }
    return ink;
  }
};

TEST_F(GrepRows, ARowNamesFileLineAndTextAndOpensThem) {
  const std::string first = m_folder.Write("game/a.vsl", "one\r\n\ttwo\t\xE4");
  const std::string second = m_folder.Write("game/deep/b.vsc", "1\r\n2\r\nTWO\r\n");
  m_folder.Write("game/c.vsl", "none");
  Start();
  Find(m_folder.Path("game"), "two");
  const struct {
    std::string place;
    const char* text;
    const char* line;
    const char* caret;
  } rows[] = {{first + " (2)", " two \xE4", "\ttwo\t\xE4", "2:1"}, {second + " (3)", "TWO ", "TWO", "3:1"}};
  ASSERT_EQ(Rows().model()->rowCount(), 2);
  EXPECT_EQ(Rows().currentIndex().row(), 0);
  EXPECT_EQ(Summary(), "2 lines in 2 of 3 files");
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&Rows());
  EXPECT_EQ(LabelOf(QAccessible::queryAccessibleInterface(&Folder())), "Choose directory:");
  EXPECT_EQ(LabelOf(QAccessible::queryAccessibleInterface(&What())), "Enter text to search for:");
  for (int i = 0; i < 2; ++i) {
    const QModelIndex index = Rows().model()->index(i, 0);
    const QString shown = FromBytes(rows[i].place) + QString::fromLatin1(rows[i].text);
    EXPECT_EQ(index.data().toString(), shown);
    EXPECT_EQ(list->child(i)->text(QAccessible::Name), shown);
    EXPECT_EQ(ToBytes(index.data(Qt::ToolTipRole).toString()), rows[i].place);
  }
  for (const int i : {1, 0}) {
    QTest::mouseClick(Rows().viewport(), Qt::LeftButton, {}, MiddleOf(i));
    QTest::mouseDClick(Rows().viewport(), Qt::LeftButton, {}, MiddleOf(i));
    QTest::mouseRelease(&Frame(), Qt::LeftButton);  // the window that opened got it, not the row
    Pump();
    EXPECT_EQ(Line(), rows[i].line);
    EXPECT_EQ(Caret(), rows[i].caret);
    EXPECT_EQ(QApplication::focusWidget(), &View());
    Press("Ctrl+W");
    QApplication::setActiveWindow(&Dialog());
    Rows().setFocus();
    Press("Enter");
    EXPECT_EQ(Line(), rows[i].line) << "Enter on the row that was clicked";
  }
}

TEST_F(GrepRows, TheDialogBeginsWithTheScriptsFolderAndTheSelectedText) {
  Start();
  Open("game/a.vsl", "one two");
  View().SetSelection({0, 4}, {0, 7});
  Press("Ctrl+Shift+F");
  EXPECT_EQ(ToBytes(Folder().currentText()), m_folder.Path("game"));
  EXPECT_EQ(What().currentText(), "two");
  EXPECT_TRUE(What().hasFocus() || What().lineEdit() == QApplication::focusWidget());
  Press("Escape");
  View().SetSelection({0, 0}, {0, 3});
  Press("Ctrl+Shift+F");
  EXPECT_EQ(What().currentText(), "one");
}

TEST_F(GrepRows, WhatWasSearchedForIsBold) {
  m_folder.Write("game/a.vsl", "mmmmmmmmmm wwwwwwwwww\r\nmmmmmmmmmm wwwwwwwwww\r\n");
  Start();
  const auto inkOfRow = [this](const char* what) {
    Find(m_folder.Path("game"), what);
    return Ink(1, 0, Rows().viewport()->width());
  };
  const int64_t both = inkOfRow("mmmmmmmmmm wwwwwwwwww");
  const int64_t one = inkOfRow("mmmmmmmmmm");
  const int64_t few = inkOfRow("mm w");
  EXPECT_GT(both, one);
  EXPECT_GT(one, few);
}

}  // namespace
}  // namespace quill
