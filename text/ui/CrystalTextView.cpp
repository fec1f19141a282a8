// Set-up, settings, scrolling and damage of CCrystalTextView.
#include "text/ui/CrystalTextView.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <algorithm>

#include "text/parse/Folding.h"
#include "text/ui/AccessibleText.h"
#include "text/ui/TextAnnouncer.h"

namespace quill {
namespace {

constexpr int64_t kBraceLook = 64'000;  ///< characters; a key must not walk through a whole large file
/// Scroll bars follow typing after a moment: drawing them costs more than the line that was typed.
constexpr int kScrollBarDelayMs = 60;
constexpr int kRowsAround = 4;    ///< above and below what was jumped to
constexpr int kRightMargin = 40;  ///< pixels that can be scrolled beyond the widest line
constexpr int64_t kUnits = ColumnMetrics::kUnitsPerPixel;

}  // namespace

CCrystalTextView::CCrystalTextView(QWidget* parent)
    : QAbstractScrollArea(parent),
      m_input(new InputChain(*this)),
      m_announcer(std::make_unique<TextAnnouncer>(*this)) {
  AccessibleText::Register();
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setMouseTracking(true);
  viewport()->setFocusProxy(this);
  m_model.SetDamageCallback([this] { ScheduleDamage(); });
  m_settings.fontName = "FixedSys";
  m_palette = ViewPalette(m_settings.colours);
}

CCrystalTextView::~CCrystalTextView() {
  m_model.SetBuffer(nullptr);
}

void CCrystalTextView::SetBuffer(CCrystalTextBuffer* buffer) {
  m_model.SetBuffer(buffer);
  EndMouse();
  m_braceSearched.reset();
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  Q_EMIT BufferReplaced();
  AfterCaretMove(m_font != nullptr);
}

void CCrystalTextView::ApplySettings(const ViewSettings& settings) {
  m_settings = settings;
  m_palette = ViewPalette(settings.colours);
  const int rows = m_font == nullptr ? 0 : RowsIn(viewport()->height());
  RebuildFont();
  KeepCaretRow(rows);
  m_braceSearched.reset();
  UpdateBraceMatch();
}

const EditorFont& CCrystalTextView::LoadedFont() const {
  // Loading one takes milliseconds: not before the settings have come, if they come at once.
  if (m_font == nullptr) const_cast<CCrystalTextView*>(this)->RebuildFont();
  return *m_font;
}

void CCrystalTextView::RebuildFont() {
  m_fontRatio = devicePixelRatioF();
  m_font =
      std::make_unique<EditorFont>(QString::fromStdString(m_settings.fontName),
                                   m_settings.fontSize * m_zoom / 100.0, m_palette.UsesBold(), m_fontRatio);
  m_batch = std::make_unique<GlyphBatch>(*m_font);
  m_model.SetMetrics(m_font->Advances(), m_settings.tabSize);
  UpdateMargin();
  ApplyDamage();
}

void CCrystalTextView::SetZoom(int percent) {
  percent = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (percent == m_zoom) return;
  const int32_t top = TopLine();
  const int rows = RowsIn(viewport()->height());
  m_zoom = percent;
  RebuildFont();
  ScrollToLine(top);
  KeepCaretRow(rows);
  Q_EMIT ZoomChanged();
}

void CCrystalTextView::SetDecoration(const LineDecoration* decoration) {
  m_decoration = decoration;
  viewport()->update();
}

void CCrystalTextView::SetFields(const LineDecoration* fields) {
  m_fields = fields;
  viewport()->update();
}

void CCrystalTextView::SetOverwriteMode(bool overwrite) {
  if (m_overwrite == overwrite) return;
  m_overwrite = overwrite;
  viewport()->update(CaretRect().adjusted(-1, 0, LineHeight(), 0));
  Q_EMIT OverwriteModeChanged();
}

void CCrystalTextView::SetDropPlace(std::optional<TextPosition> place) {
  if (place == m_dropPlace) return;
  for (const auto& changed : {m_dropPlace, place}) {
    if (changed) UpdateRows(changed->line, changed->line);
  }
  m_dropPlace = place;
}

uint32_t CCrystalTextView::ColourLine(uint32_t state, int32_t line, TextBlock* blocks, int32_t* count) {
  return quill::ColourLine(*Buffer(), Words(), state, line, blocks, count);
}

const WordClasses& CCrystalTextView::Words() const {
  static const WordClasses kNone;
  return kNone;
}

// Geometry

QRect CCrystalTextView::TextArea() const {
  return viewport()->rect().adjusted(m_margin.width, 0, 0, 0);
}

int CCrystalTextView::PageRows() const {
  return std::max(1, viewport()->height() / LineHeight());
}

int CCrystalTextView::RowTop(int32_t row) const {
  return (row - verticalScrollBar()->value()) * LineHeight();
}

int32_t CCrystalTextView::TopLine() const {
  return m_model.HasText() ? m_model.Folds().LineOfRow(verticalScrollBar()->value()) : 0;
}

QPoint CCrystalTextView::PointOf(TextPosition position) const {
  if (!m_model.HasText()) return {m_margin.width, 0};
  auto& model = const_cast<TextViewModel&>(m_model);  // asking only fills caches
  const int64_t x = model.XOf(position) / kUnits - horizontalScrollBar()->value();
  const int64_t y =
      static_cast<int64_t>(m_model.Folds().RowOfLine(position.line) - verticalScrollBar()->value()) *
      LineHeight();
  constexpr int64_t kFar = 1 << 24;
  return {m_margin.width + static_cast<int>(std::clamp(x, -kFar, kFar)),
          static_cast<int>(std::clamp(y, -kFar, kFar))};
}

TextPosition CCrystalTextView::PositionAt(QPoint point) const {
  if (!m_model.HasText()) return {};
  auto& model = const_cast<TextViewModel&>(m_model);
  const int row = verticalScrollBar()->value() + (point.y() < 0 ? -1 : point.y() / LineHeight());
  if (row >= m_model.RowCount()) return m_model.Buffer()->EndOfText();
  const int32_t line = m_model.Folds().LineOfRow(std::max(row, 0));
  const int64_t x = std::max<int64_t>(0, point.x() - m_margin.width + horizontalScrollBar()->value());
  return {line, model.CharacterAt(line, x * kUnits, true)};
}

BlockCorner CCrystalTextView::CornerAt(QPoint point) const {
  if (!m_model.HasText()) return {};
  auto& model = const_cast<TextViewModel&>(m_model);
  const int row = verticalScrollBar()->value() + (point.y() < 0 ? -1 : point.y() / LineHeight());
  const int64_t x = std::max<int64_t>(0, point.x() - m_margin.width + horizontalScrollBar()->value());
  return model.CornerAt(m_model.Folds().LineOfRow(std::clamp(row, 0, m_model.RowCount() - 1)), x * kUnits);
}

int64_t CCrystalTextView::CaretX() const {
  auto& model = const_cast<TextViewModel&>(m_model);
  return m_model.IsColumnSelection() ? model.XOfCorner(m_model.CaretCorner()) : model.XOf(CaretPos());
}

bool CCrystalTextView::IsInMargin(QPoint point) const {
  return point.x() < m_margin.width - MarginLayout::kTextGap;
}

QRect CCrystalTextView::CaretRect() const {
  QPoint point = PointOf(CaretPos());
  if (m_model.HasText() && m_model.IsColumnSelection()) {
    auto& model = const_cast<TextViewModel&>(m_model);
    point.rx() += static_cast<int>((CaretX() - model.XOf(CaretPos())) / kUnits);
  }
  int width = 2;
  if (m_overwrite) width = std::max(2, static_cast<int>(LoadedFont().Advances()['0'] / kUnits));
  return {point, QSize(width, LineHeight())};
}

void CCrystalTextView::UpdateMargin() {
  const int32_t lines = m_model.HasText() ? Buffer()->LineCount() : 0;
  const int before = m_margin.width;
  m_margin = MarginLayout::For(LoadedFont(), lines, m_settings.showLineNumbers, m_settings.showFolding);
  if (m_margin.width != before) viewport()->update();
}

void CCrystalTextView::UpdateScrollBars() {
  m_scrollBars.stop();
  if (m_model.HasText() && !m_model.Widths().IsComplete()) m_measure.start(0, this);
  const int rows = m_model.RowCount();
  const int page = PageRows();
  verticalScrollBar()->setPageStep(page);
  verticalScrollBar()->setRange(0, std::max(0, rows - page));
  const int area = std::max(1, TextArea().width());
  const int64_t width = m_model.HasText() ? m_model.Widths().Width() / kUnits : 0;
  constexpr int64_t kWidest = std::numeric_limits<int>::max() / 2;
  horizontalScrollBar()->setPageStep(area);
  horizontalScrollBar()->setSingleStep(static_cast<int>(LoadedFont().Advances()['0'] / kUnits) * 4);
  horizontalScrollBar()->setRange(
      0, static_cast<int>(std::clamp<int64_t>(width + kRightMargin - area, 0, kWidest)));
}

// Damage

QEvent::Type CCrystalTextView::DamageEvent() {
  static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
  return type;
}

void CCrystalTextView::ScheduleDamage() {
  if (m_damagePosted) return;
  m_damagePosted = true;
  QCoreApplication::postEvent(this, new QEvent(DamageEvent()), Qt::HighEventPriority);
}

void CCrystalTextView::ApplyDamage() {
  if (m_font == nullptr) return;  // nothing was ever painted
  UpdateBraceMatch();
  if (m_model.HasText()) m_model.ParseThrough(TopLine() + 2 * PageRows());
  const ViewDamage damage = m_model.TakeDamage();
  if (damage.IsEmpty()) return;
  if (damage.layout) {
    UpdateMargin();
    if (m_model.HasText() && damage.everything) {
      m_model.Widths().Measure(TopLine(), TopLine() + PageRows());
    }
    if (damage.everything || verticalScrollBar()->value() > m_model.RowCount() - PageRows()) {
      UpdateScrollBars();
    } else if (!m_scrollBars.isActive()) {
      m_scrollBars.start(kScrollBarDelayMs, this);
    }
  }
  if (damage.everything) {
    viewport()->update();
  } else {
    UpdateRows(damage.first, damage.last);
    UpdateRows(CaretPos().line, CaretPos().line);
  }
}

void CCrystalTextView::UpdateRows(int32_t firstLine, int32_t lastLine) {
  if (!m_model.HasText() || firstLine > lastLine) return;
  const int32_t top = TopLine();
  const int32_t last = Buffer()->LineCount() - 1;
  const int first = firstLine <= top ? 0 : RowTop(m_model.Folds().RowOfLine(std::min(firstLine, last)));
  const int bottom =
      lastLine >= last ? viewport()->height() : RowTop(m_model.Folds().RowOfLine(lastLine)) + LineHeight();
  if (first < viewport()->height() && bottom > 0) {
    viewport()->update(0, first, viewport()->width(), std::min(bottom, viewport()->height()) - first);
  }
}

// Caret and selection

void CCrystalTextView::SetCaretPos(TextPosition position, bool extendSelection) {
  m_model.SetColumnSelection(false);
  m_model.SetCaret(position, extendSelection);
  AfterCaretMove();
}

void CCrystalTextView::SetSelection(TextPosition anchor, TextPosition caret) {
  m_model.SetColumnSelection(false);
  m_model.SetSelection(anchor, caret);
  AfterCaretMove();
}

void CCrystalTextView::SelectAll() {
  if (!m_model.HasText()) return;
  m_model.SetColumnSelection(false);
  m_model.SetSelection({}, Buffer()->EndOfText());
  AfterCaretMove(false);
}

void CCrystalTextView::SelectFound(TextPosition position, int32_t length) {
  EnsureVisible({position.line, position.character + length}, kRowsAround);
  SetSelection(position, {position.line, position.character + length});
}

void CCrystalTextView::GotoLine(int32_t line) {
  EnsureVisible({line, 0}, kRowsAround);
  SetCaretPos({line, 0});
}

void CCrystalTextView::AfterCaretMove(bool scroll) {
  if (scroll) EnsureVisible(CaretPos());
  UpdateBraceMatch();
  RestartBlink();
  ApplyDamage();
  Q_EMIT CaretMoved();
  Q_EMIT SelectionChanged();
}

void CCrystalTextView::UpdateBraceMatch() {
  const uint64_t changes = Buffer() == nullptr ? 0 : Buffer()->ChangeCount();
  const std::pair now(CaretPos(), changes);
  if (m_braceSearched == now) return;
  m_braceSearched = now;
  SearchBrace(kBraceLook);
}

void CCrystalTextView::SearchBrace(int64_t mostCharacters) {
  BraceIndex::Answer found;
  if (m_settings.braceMatch && m_model.HasText())
    found = m_model.Braces().Find(CaretPos(), GetCommentMarkers(), mostCharacters);
  if (found.complete) {
    m_braceSearch.stop();
  } else if (!m_braceSearch.isActive()) {
    m_braceSearch.start(0, this);
  }
  if (found.match == m_brace) return;
  if (m_brace) m_model.DamageLines(m_brace->line, m_brace->line);
  if (found.match) UpdateRows(found.match->line, found.match->line);
  m_brace = found.match;
}

// Scrolling

void CCrystalTextView::EnsureVisible(TextPosition position, int around) {
  if (!m_model.HasText()) return;
  position = m_model.Clamp(position);
  if (m_model.Folds().IsHidden(position.line))
    ExpandHead(*Buffer(), m_model.Folds().ShownLine(position.line));
  ApplyDamage();
  const int row = m_model.Folds().RowOfLine(position.line);
  const int top = verticalScrollBar()->value();
  const int page = PageRows();
  around = std::min(around, (page - 1) / 2);
  if (row + around - page >= verticalScrollBar()->maximum()) UpdateScrollBars();
  if (row < top + around) {
    verticalScrollBar()->setValue(row < top - page ? row - page / 2 : row - around);
  } else if (row + around >= top + page) {
    verticalScrollBar()->setValue(row >= top + 2 * page ? row - page / 2 : row + around - page + 1);
  }
  const int area = TextArea().width();
  const int64_t x = (position == CaretPos() ? CaretX() : m_model.XOf(position)) / kUnits;
  const int64_t left = horizontalScrollBar()->value();
  const int64_t context = std::min<int64_t>(area / 4, 60);
  if (x < left) {
    horizontalScrollBar()->setValue(static_cast<int>(std::max<int64_t>(0, x - context)));
  } else if (x > left + area - 4) {
    const int64_t value = x - area + context;
    if (value > horizontalScrollBar()->maximum()) horizontalScrollBar()->setMaximum(static_cast<int>(value));
    horizontalScrollBar()->setValue(static_cast<int>(value));
  }
}

void CCrystalTextView::KeepCaretRow(int rowsBefore) {
  if (!m_model.HasText()) return;
  const int row = m_model.Folds().RowOfLine(m_model.Folds().ShownLine(CaretPos().line));
  const int top = verticalScrollBar()->value();
  if (row < top || row >= top + rowsBefore || row < top + PageRows()) return;
  UpdateScrollBars();
  verticalScrollBar()->setValue(row - PageRows() + 1);
}

void CCrystalTextView::ScrollToLine(int32_t line) {
  if (m_model.HasText())
    verticalScrollBar()->setValue(m_model.Folds().RowOfLine(m_model.Clamp({line, 0}).line));
}

void CCrystalTextView::ShowLinesAround(int32_t line) {
  EnsureVisible({line, CaretPos().character});
  if (!m_model.HasText()) return;
  const int row = m_model.Folds().RowOfLine(m_model.Clamp({line, 0}).line);
  const int above = PageRows() / 4;
  const int top = verticalScrollBar()->value();
  if (row < top + 1 || row > top + 2 * above) verticalScrollBar()->setValue(row - above);
}

void CCrystalTextView::scrollContentsBy(int dx, int dy) {
  if (m_model.HasText()) m_model.ParseThrough(TopLine() + 2 * PageRows());
  if (dx != 0 && dy == 0) {
    viewport()->scroll(dx, 0, TextArea());
  } else if (dx == 0 && std::abs(dy) < PageRows()) {
    viewport()->scroll(0, dy * LineHeight());
  } else {
    viewport()->update();
  }
  // Last: where damaged lines stand is asked of the new position, and scrolling moves what is marked already.
  ApplyDamage();
  if (dy != 0) Q_EMIT ScrolledVertically();
}

}  // namespace quill
