#include <QDrag>
#include <QMimeData>
#include <QTest>
#include <functional>

#include "shell/ui/QuillDoc.h"
#include "ui/ViewEvents.h"

namespace {

QObject* draggedFrom = nullptr;
std::function<Qt::DropAction(QDrag&)> dragUnderWay;

}  // namespace

/// Stands in for the toolkit's own: where there is no display no drag is ever under way.
QObject* QDropEvent::source() const {
  return draggedFrom;
}

Qt::DropAction QDrag::exec(Qt::DropActions, Qt::DropAction) {
  deleteLater();
  return dragUnderWay ? dragUnderWay(*this) : Qt::IgnoreAction;
}

namespace quill {
namespace {

class DragAndDrop : public ViewFixture {
 protected:
  ~DragAndDrop() override {
    draggedFrom = nullptr;
    dragUnderWay = nullptr;
  }

  /// Drags what is selected, from a place inside it, and drops it.
  void DragSelection(QPoint from, QPoint to, Qt::KeyboardModifiers modifiers = {}) {
    DragTo(View(), from, View(), to, modifiers);
  }
  /// The same from one view to another; `meanwhile` happens just before the source hears of the drop.
  void DragTo(CQuillView& view, QPoint from, CQuillView& other, QPoint to,
              Qt::KeyboardModifiers modifiers = {}, const std::function<void()>& meanwhile = {}) {
    const TextRange selected = view.Selection();
    dragUnderWay = [&](QDrag& drag) {
      EXPECT_EQ(view.Selection(), selected) << "what is dragged stays selected";
      draggedFrom = drag.source();
      const bool dropped =
          DraggedData(*other.viewport(), *drag.mimeData(), Qt::MoveAction).Drop(to, modifiers);
      draggedFrom = nullptr;
      if (meanwhile) meanwhile();
      if (!dropped) return Qt::IgnoreAction;
      return modifiers.testFlag(Qt::ControlModifier) ? Qt::CopyAction : Qt::MoveAction;
    };
    Mouse mouse(*view.viewport());
    mouse.Press(from);
    mouse.Move(from + QPoint(QApplication::startDragDistance() + 5, 0));
    dragUnderWay = nullptr;
    Pump();
  }
  static QPoint In(CQuillView& view, int32_t line, int32_t character) {
    return view.PointOf({line, character}) + QPoint(2, view.LineHeight() / 2);
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

TEST_F(DragAndDrop, ToAnotherWindowOfTheTextIsOneStepAndLosesNothing) {
  Open("a.vsl", "one two three\r\nfour");
  CQuillView& first = View();
  ASSERT_TRUE(Choose("Window > New Window"));
  CQuillView& second = View();
  ASSERT_NE(&first, &second);
  const struct {
    int32_t line, character;
    Qt::KeyboardModifiers modifiers;
    const char* text;
  } rows[] = {
      {1, 2, Qt::NoModifier, "one three|fotwo ur"},  {0, 0, Qt::NoModifier, "two one three|four"},
      {0, 13, Qt::NoModifier, "one threetwo |four"}, {0, 6, Qt::NoModifier, "one two three|four"},
      {0, 8, Qt::NoModifier, "one two three|four"},  {1, 2, Qt::ControlModifier, "one two three|fotwo ur"},
  };
  for (const auto& row : rows) {
    first.SetSelection({0, 4}, {0, 8});
    DragTo(first, In(first, 0, 5), second, In(second, row.line, row.character), row.modifiers);
    EXPECT_EQ(ActiveText(), row.text);
    if (ActiveText() != "one two three|four") second.Undo();
    EXPECT_EQ(ActiveText(), "one two three|four") << "one step back from " << row.text;
    EXPECT_FALSE(second.CanUndo()) << row.text;
  }
}

TEST_F(DragAndDrop, ToAnotherTextMovesOrLeavesEverything) {
  CQuillDoc& from = Open("a.vsl", "one two three");
  CQuillView& first = View();
  CQuillDoc& to = Open("b.vsl", "four");
  CQuillView& second = View();
  first.SetSelection({0, 4}, {0, 8});
  DragTo(first, In(first, 0, 5), second, In(second, 0, 2));
  EXPECT_EQ(TextOf(from) + " " + TextOf(to), "one three fotwo ur");
  first.Undo();
  second.Undo();
  EXPECT_EQ(TextOf(from) + " " + TextOf(to), "one two three four");
  EXPECT_FALSE(first.CanUndo() || second.CanUndo()) << "one step each";

  first.SetSelection({0, 4}, {0, 8});
  DragTo(first, In(first, 0, 5), second, In(second, 0, 2), {}, [&] { first.SetSelection({0, 0}, {0, 3}); });
  EXPECT_EQ(TextOf(from), "one two three") << "something else is selected by now";
  to.Buffer().SetReadOnly(true);
  first.SetSelection({0, 4}, {0, 8});
  DragTo(first, In(first, 0, 5), second, In(second, 0, 2));
  EXPECT_EQ(TextOf(from), "one two three") << "it was dropped nowhere";
}

TEST_F(DragAndDrop, AColumnBlockStaysABlock) {
  Open("a.vsl", "abcd\r\nABCD\r\nxy");
  const auto select = [this] { ViewMouse().Drag(At(0, 1), At(1, 3), Qt::AltModifier); };
  select();
  DragSelection(At(1, 1), At(0, 4));
  EXPECT_EQ(ActiveText(), "adbc|ADBC|xy");
  Press("Delete");
  EXPECT_EQ(ActiveText(), "ad|AD|xy") << "it is selected where it went";
  Press("Ctrl+Z");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "abcd|ABCD|xy");
  select();
  DragSelection(At(0, 2), At(2, 2), Qt::ControlModifier);
  EXPECT_EQ(ActiveText(), "abcd|ABCD|xybc|  BC");
  Press("Ctrl+Z");
  CQuillView& first = View();
  CQuillDoc& to = Open("b.vsl", "1\r\n22");
  Mouse(*first.viewport()).Drag(In(first, 0, 1), In(first, 1, 3), Qt::AltModifier);
  DragTo(first, In(first, 0, 2), View(), At(0, 1));
  EXPECT_EQ(TextOf(to), "1bc|2BC2");
  Mouse mouse(*first.viewport());
  mouse.Press(In(first, 0, 3));
  EXPECT_FALSE(first.Model().IsColumnSelection()) << "beside it another selection begins";
  mouse.Release(In(first, 0, 3));
}

TEST_F(DragAndDrop, ScrollsAtTheEdges) {
  std::string text;
  for (int i = 0; i < 200; ++i) text += "line\r\n";
  Open("a.vsl", text);
  QMimeData data;
  data.setText("x");
  DraggedData dragged(Viewport(), data);
  ASSERT_TRUE(dragged.EnterAndMove({100, Viewport().height() - 3}));
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() > 3; }));
  ASSERT_TRUE(dragged.EnterAndMove({100, 2}));
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() == 0; }));
  dragged.Leave();
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
