#include <QMimeData>

#include "shell/ui/QuillDoc.h"
#include "ui/ViewEvents.h"

namespace {

QObject* draggedFrom = nullptr;

}  // namespace

/// Stands in for the toolkit's own: where there is no display no drag is ever under way.
QObject* QDropEvent::source() const {
  return draggedFrom;
}

namespace quill {
namespace {

class DragAndDrop : public ViewFixture {
 protected:
  ~DragAndDrop() override { draggedFrom = nullptr; }

  /// Drags what is selected, from a place inside it, and drops it.
  void DragSelection(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    const std::string before = Shown();
    Mouse mouse = ViewMouse();
    mouse.Press(from);
    mouse.Move(from + QPoint(QApplication::startDragDistance() + 5, 0));
    EXPECT_EQ(Shown(), before) << "what is dragged stays selected";
    draggedFrom = &View();
    Drop(to, modifiers, Qt::MoveAction);
    draggedFrom = nullptr;
    Pump();
  }
  bool Drop(QPoint to, Qt::KeyboardModifiers modifiers = {}, Qt::DropAction plain = Qt::CopyAction) {
    QMimeData data;
    data.setText("dragged\n");
    return DraggedData(Viewport(), data, plain).Drop(to, modifiers);
  }
};

TEST_F(DragAndDrop, InsideAViewMovesAndWithControlCopies) {
  const struct {
    int32_t line, character;
    Qt::KeyboardModifiers modifiers;
    const char* shown;
  } rows[] = {
      {1, 2, Qt::NoModifier, "one three\nfo[two |ur"},
      {1, 2, Qt::ControlModifier, "one two three\nfo[two |ur"},
      {0, 0, Qt::NoModifier, "[two |one three\nfour"},
      {0, 13, Qt::NoModifier, "one three[two |\nfour"},
      {0, 6, Qt::NoModifier, "one [two |three\nfour"},
      {0, 6, Qt::ControlModifier, "one tw[two |o three\nfour"},
      {0, 8, Qt::ShiftModifier, "one [two |three\nfour"},
  };
  int number = 0;
  for (const auto& row : rows) {
    Open(std::to_string(++number) + ".vsl", "one two three\r\nfour");
    PressKeys({"Ctrl+Right", "Ctrl+Shift+Right"});
    ASSERT_EQ(Shown(), "one [two |three\nfour");
    const QPoint to = At(row.line, row.character);
    DragSelection(At(0, 5), to, row.modifiers);
    EXPECT_EQ(Shown(), row.shown);
    EXPECT_TRUE(View().hasFocus());
    if (ActiveText() != "one two three|four") Press("Ctrl+Z");
    EXPECT_EQ(ActiveText(), "one two three|four") << "one step back from " << row.shown;
    EXPECT_FALSE(View().CanUndo()) << row.shown;
  }
}

TEST_F(DragAndDrop, SelectedLinesMoveWithTheirEnds) {
  Open("a.vsl", "one\r\ntwo\r\nthree\r\n");
  PressKeys({"Shift+Down"});
  DragSelection(At(0, 1), At(2, 0));
  EXPECT_EQ(Shown(), "two\n[one\n|three\n");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "two\r\none\r\nthree\r\n");
}

TEST_F(DragAndDrop, TextFromElsewhereIsInsertedWithTheLineEndsOfTheView) {
  Open("a.vsl", "one\r\ntwo");
  Press("Ctrl+A");
  EXPECT_TRUE(Drop(At(1, 2)));
  EXPECT_EQ(Shown(), "one\ntw[dragged\n|o") << "the selection was not what was dragged";
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "one\r\ntwdragged\r\no");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "one|two");
  EXPECT_TRUE(Drop(QPoint(Viewport().width() - 5, Viewport().height() - 5), Qt::ControlModifier));
  EXPECT_EQ(ActiveText(), "one|twodragged|") << "below the text is its end";
}

TEST_F(DragAndDrop, AReadOnlyTextAndAPictureAreNoPlaceToDrop) {
  Open("a.vsl", "one\r\ntwo");
  QMimeData picture;
  picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
  EXPECT_FALSE(DraggedData(Viewport(), picture).EnterAndMove(At(1, 1)));
  Document().Buffer().SetReadOnly(true);
  EXPECT_FALSE(Drop(At(1, 1)));
  EXPECT_EQ(ActiveText(), "one|two");
}

TEST_F(DragAndDrop, TheDropPlaceIsMarkedWhileSomethingIsOverIt) {
  Open("a.vsl", "one\r\ntwo\r\nthree");
  QMimeData data;
  data.setText("x");
  DraggedData dragged(Viewport(), data);
  const auto isMarked = [this](int32_t line, int32_t character) {
    const QPoint top = View().PointOf({line, character});
    const QRect place(top, QSize(1, View().LineHeight()));
    return Count(OnScreen(), place, qRgb(0, 0, 0)) == place.height();
  };
  EXPECT_FALSE(isMarked(1, 3));
  EXPECT_TRUE(dragged.EnterAndMove(At(1, 3)));
  EXPECT_TRUE(isMarked(1, 3));
  EXPECT_TRUE(dragged.EnterAndMove(At(2, 5)));
  EXPECT_TRUE(isMarked(2, 5));
  EXPECT_FALSE(isMarked(1, 3));
  dragged.Leave();
  EXPECT_FALSE(isMarked(2, 5));
  EXPECT_TRUE(dragged.Drop(At(2, 5)));
  Press("Ctrl+Home");
  EXPECT_FALSE(isMarked(2, 5));
}

}  // namespace
}  // namespace quill
