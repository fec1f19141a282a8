#pragma once
#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QEvent>
#include <QPoint>
#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "text/parse/CommentMarkers.h"
#include "text/ui/EditorFont.h"
#include "text/ui/InputChain.h"
#include "text/ui/LinePainter.h"
#include "text/ui/MarginPainter.h"
#include "text/ui/ViewPalette.h"
#include "text/view/MouseSelection.h"
#include "text/view/Navigation.h"
#include "text/view/TextViewModel.h"
#include "text/view/ViewSettings.h"

class QPrinter;

namespace quill {

class CCrystalTextBuffer;
class LineDecoration;
class TextAnnouncer;

/// The window that shows one text: paints it, keeps caret and selection, scrolls, folds, and handles
/// the keys and mouse that move about. Knows no editing and no language: a derived view supplies the
/// line parser.
class CCrystalTextView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit CCrystalTextView(QWidget* parent = nullptr);
  ~CCrystalTextView() override;

  /// Null detaches. The buffer must outlive the view or be detached first.
  void SetBuffer(CCrystalTextBuffer* buffer);
  CCrystalTextBuffer* Buffer() const { return m_model.Buffer(); }
  /// Who sees keys and mouse before the text.
  InputChain& Input() { return *m_input; }
  virtual void ApplySettings(const ViewSettings& settings);
  const ViewSettings& Settings() const { return m_settings; }
  /// Who tells assistive technology of text, caret and selection.
  TextAnnouncer& Announcer() { return *m_announcer; }
  TextViewModel& Model() { return m_model; }
  const TextViewModel& Model() const { return m_model; }

  TextPosition CaretPos() const { return m_model.Caret(); }
  /// Moves the caret, by default dropping the selection, and scrolls it into view.
  void SetCaretPos(TextPosition position, bool extendSelection = false);
  TextRange Selection() const { return m_model.Selection(); }
  void SetSelection(TextPosition anchor, TextPosition caret);
  void SelectAll();
  /// Selects found text and scrolls it into view, with some lines around it.
  void SelectFound(TextPosition position, int32_t length);
  /// Likewise with some lines around.
  void GotoLine(int32_t line);
  /// Scrolls as little as needed to show `around` rows above and below as well; a line inside a collapsed
  /// block is shown first.
  void EnsureVisible(TextPosition position, int around = 0);
  void ScrollToLine(int32_t line);
  /// For a line that was jumped to: when what follows it would be out of sight, scrolls until it stands in
  /// the upper part of the view.
  void ShowLinesAround(int32_t line);
  int32_t TopLine() const;

  /// Percent of the chosen font size, `kSmallestZoom` to `kLargestZoom`.
  void SetZoom(int percent);
  int Zoom() const { return m_zoom; }
  static constexpr int kSmallestZoom = 30;
  static constexpr int kLargestZoom = 400;

  /// Null for none. It must outlive the view or be taken away first.
  void SetDecoration(const LineDecoration* decoration);
  /// Likewise, but what it marks stands in boxes: places to be filled in.
  void SetFields(const LineDecoration* fields);

  bool OverwriteMode() const { return m_overwrite; }
  void SetOverwriteMode(bool overwrite);

  /// To be called after a change of caret, selection or folds that was made in the model: brace match,
  /// signals, scrolling, damage.
  void AfterCaretMove(bool scroll = true);
  /// Repaints what the model says has changed; handlers of events call it last.
  void ApplyDamage();
  /// The caret's rectangle in the viewport.
  QRect CaretRect() const;
  const QFont& Font() const { return LoadedFont().Font(); }
  int LineHeight() const { return LoadedFont().LineHeight(); }
  /// Rows that fit wholly.
  int PageRows() const;
  TextPosition PositionAt(QPoint viewportPoint) const;
  /// The same for a corner of a column selection, which may lie behind a line's end.
  BlockCorner CornerAt(QPoint viewportPoint) const;
  /// Beside the text, where marks, numbers and folding are.
  bool IsInMargin(QPoint viewportPoint) const;
  QPoint PointOf(TextPosition position) const;

  /// Parses one line for painting, see the function of the same name.
  uint32_t ColourLine(uint32_t state, int32_t line, TextBlock* blocks, int32_t* count);
  /// The coloured blocks of a line around the columns that are wanted; the first begins at or before these.
  /// Valid until the next call.
  std::span<const TextBlock> BlocksOf(int32_t line, ColumnRange columns);
  const ViewPalette& Palette() const { return m_palette; }
  /// The names that painting looks words up in.
  virtual const WordClasses& Words() const;
  /// Of the language, for brace matching and comment commands. The plain view has none.
  virtual CommentMarkers GetCommentMarkers() const { return {}; }

 Q_SIGNALS:
  /// Another buffer, or none, is shown from now on.
  void BufferReplaced();
  void CaretMoved();
  void SelectionChanged();
  void OverwriteModeChanged();
  void ZoomChanged();
  void GotFocus();
  void LostFocus();
  void ScrolledVertically();

 protected:
  bool event(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void changeEvent(QEvent* event) override;
  void hideEvent(QHideEvent* event) override;

  /// True when the key moved the caret or the view.
  bool HandleNavigationKey(QKeyEvent* event);
  /// The left button is not held any more, wherever it was released: what it was drawing ends as it is.
  virtual void EndMouse();
  /// A press on selected text may begin a drag; the plain view selects anew.
  virtual bool BeginsDrag(QMouseEvent*) { return false; }
  /// Scrolls a step when the point is at an edge of the text area.
  void ScrollAtEdge(QPoint point);
  /// Where a drop would go, marked like a caret.
  void SetDropPlace(std::optional<TextPosition> place);

 private:
  const EditorFont& LoadedFont() const;
  void RebuildFont();
  void UpdateScrollBars();
  void UpdateMargin();
  void UpdateRows(int32_t firstLine, int32_t lastLine);
  void RestartBlink();
  /// Posted to itself while damage gathers.
  static QEvent::Type DamageEvent();
  void ScheduleDamage();
  /// Searches anew when the caret moved or the text changed, in another view, too.
  void UpdateBraceMatch();
  void SearchBrace(int64_t mostCharacters);

  struct RowSpan {
    int first;
    int last;
  };
  std::vector<RowSpan> RowsOf(const QRegion& region) const;
  void PaintRows(QPainter& painter, const RowSpan& rows);
  void PaintTextRow(LinePainter& painter, int32_t line, int top);
  LinePicture PictureOf(int32_t line);
  /// Returns the open blocks after the line when there are `depth` before it.
  int32_t PaintMarginRow(MarginPainter& painter, int32_t line, int top, int32_t depth);
  void AddSelection(int32_t line, LinePicture& picture);
  void AddColumnSelection(int32_t line, LinePicture& picture);
  void PaintCaret(QPainter& painter);
  QRect TextArea() const;
  int RowTop(int32_t row) const;
  /// Rows of which at least a strip is seen in a view of that height.
  int RowsIn(int height) const { return (std::max(height, 0) + LineHeight() - 1) / LineHeight(); }
  /// After the layout has changed: the caret line is seen whole if any of it was, when `rowsBefore` were
  /// seen.
  void KeepCaretRow(int rowsBefore);
  bool MoveCaret(QKeyEvent* event);
  void MarginPress(QMouseEvent* event, int32_t line);
  void SelectLines(int32_t line, bool extend = false);
  TextRange LineRangeAt(int32_t line) const;
  bool IsTripleClick(QMouseEvent* event);
  void ExtendSelectionTo(QPoint point);
  void DragScrollStep();
  /// Of the caret, 1/64 pixel from its line's start.
  int64_t CaretX() const;

  InputChain* m_input;
  std::unique_ptr<TextAnnouncer> m_announcer;
  TextViewModel m_model;
  ViewSettings m_settings;
  ViewPalette m_palette;
  std::unique_ptr<EditorFont> m_font;
  std::unique_ptr<GlyphBatch> m_batch;
  MarginLayout m_margin;
  const LineDecoration* m_decoration = nullptr;
  const LineDecoration* m_fields = nullptr;
  Navigator m_navigator{m_model};
  MouseSelection m_mouse;
  BlockCorner m_blockOrigin;  ///< where the mouse began a column selection
  QElapsedTimer m_doubleClick;
  QPoint m_doubleClickPoint;
  std::vector<TextBlock> m_blocks;
  std::vector<int32_t> m_guides;
  std::vector<ColumnRange> m_marks;
  std::vector<ColumnRange> m_boxes;
  std::optional<TextPosition> m_brace;
  /// The caret and the state of the text that `m_brace` is for.
  std::optional<std::pair<TextPosition, uint64_t>> m_braceSearched;
  std::optional<TextPosition> m_dropPlace;
  QBasicTimer m_blink;
  QBasicTimer m_measure;
  QBasicTimer m_braceSearch;  ///< goes on with a search that is not complete
  QBasicTimer m_scrollBars;
  QBasicTimer m_dragScroll;
  double m_fontRatio = 1;  ///< device pixels a logical pixel that the font was made for
  int m_zoom = 100;
  int m_wheelRest = 0;
  bool m_caretShown = false;
  bool m_overwrite = false;
  bool m_damagePosted = false;
};

}  // namespace quill
