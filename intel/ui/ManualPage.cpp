#include "intel/ui/ManualPage.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QImage>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "intel/manual/ManualNames.h"
#include "intel/manual/ManualStyle.h"
#include "intel/ui/ManualBook.h"
#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr int kSideMargin = 24;    ///< of the text, pixels
constexpr int kWidestText = 720;   ///< pixels at a zoom of 100
constexpr int kIndent = 24;        ///< of lists, pixels
constexpr int kPicturePixels = 2;  ///< pixels of a picture's file for one of the page
constexpr int kDarkLightness = 128;
constexpr int kRowsAbove = 3;  ///< of a place that is shown in the middle: a third of the view
constexpr int kAirAbove = 10;  ///< pixels
constexpr QColor kLightMark(255, 236, 150);
constexpr QColor kDarkMark(94, 71, 20);

/// The place of `<a name>`; null when there is none.
QTextCursor AnchorIn(QTextDocument& document, const QString& anchor) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      if (!at.fragment().charFormat().anchorNames().contains(anchor)) continue;
      QTextCursor place(&document);
      place.setPosition(at.fragment().position());
      return place;
    }
  }
  return {};
}

/// Headings have sizes of their own, which win over those of a style sheet until they are taken away.
void UseStyledHeadings(QTextDocument& document) {
  QList<std::pair<QTextCursor, QTextCharFormat>> pieces;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0) continue;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      QTextCursor piece(block);
      piece.setPosition(at.fragment().position());
      piece.setPosition(at.fragment().position() + at.fragment().length(), QTextCursor::KeepAnchor);
      pieces.append({piece, at.fragment().charFormat()});
    }
  }
  QTextCursor edit(&document);
  edit.beginEditBlock();
  for (auto& [piece, format] : pieces) {
    format.clearProperty(QTextFormat::FontSizeAdjustment);
    piece.setCharFormat(format);
  }
  edit.endEditBlock();
}

}  // namespace

ManualPage::ManualPage(const ManualBook& book, QWidget* parent) : QTextBrowser(parent), m_book(book) {
  setFrameShape(QFrame::NoFrame);
  setOpenLinks(false);
  setLineWrapMode(QTextEdit::FixedPixelWidth);
  document()->setDocumentMargin(kSideMargin);
  document()->setIndentWidth(kIndent);
  // A place that was found is to be seen while the field in which it was asked for has the focus.
  QPalette colours = palette();
  for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::HighlightedText})
    colours.setColor(QPalette::Inactive, role, colours.color(QPalette::Active, role));
  setPalette(colours);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
    if (ManualBook::IsPage(url)) setSource(url);
  });
  connect(this, &QTextBrowser::sourceChanged, this, &ManualPage::OnSourceChanged);
}

void ManualPage::SetZoom(int percent) {
  percent = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (percent == m_zoom) return;
  m_zoom = percent;
  setLineWrapColumnOrWidth(TextWidth());
  Redo();
  Q_EMIT ZoomChanged(percent);
}

// Loading

bool ManualPage::IsDark() const {
  return palette().color(QPalette::Base).lightness() < kDarkLightness;
}

/// Room for a scroll bar is always left, so that the lines do not change when there is one.
int ManualPage::TextWidth() const {
  return std::min(width() - verticalScrollBar()->sizeHint().width(),
                  kWidestText * m_zoom / 100 + 2 * kSideMargin);
}

QVariant ManualPage::loadResource(int type, const QUrl& name) {
  const QUrl url = document()->baseUrl().resolved(name);
  switch (type) {
    case QTextDocument::HtmlResource:
      return LoadPage(url);
    case QTextDocument::ImageResource:
      return LoadPicture(url);
    case QTextDocument::StyleSheetResource:
      return LoadStyle(url);
    default:
      return m_book.Read(url);
  }
}

QVariant ManualPage::LoadPage(const QUrl& url) {
  const QByteArray page = m_book.Read(url);
  if (page.isEmpty()) return QVariant(UiText(StringId::kManualPageMissing).toHtmlEscaped());
  const std::string_view html(page.data(), static_cast<size_t>(page.size()));
  m_pictureWidth = page.contains("<img ") ? TextWidth() : 0;
  return QString::fromStdString(WithFittedPictures(html, m_zoom, TextWidth() - 2 * kSideMargin));
}

/// Scaled here, because a document paints its pictures without smoothing.
QVariant ManualPage::LoadPicture(const QUrl& url) const {
  const QImage image = QImage::fromData(m_book.Read(url));
  if (image.isNull()) return {};
  const PageArea area = FittedPicture({image.width() / kPicturePixels, image.height() / kPicturePixels},
                                      m_zoom, TextWidth() - 2 * kSideMargin);
  const qreal ratio = devicePixelRatioF();
  const QSize pixels(static_cast<int>(std::lround(area.width * ratio)),
                     static_cast<int>(std::lround(area.height * ratio)));
  QImage fitted = image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
                      .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  fitted.setDevicePixelRatio(ratio);
  return fitted;
}

QVariant ManualPage::LoadStyle(const QUrl& url) const {
  QUrl sheet = url;
  if (url.fileName() == QLatin1String(manual::kStyleSheet) && IsDark())
    sheet = url.resolved(QUrl(QString::fromLatin1(manual::kDarkStyleSheet)));
  const std::string fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).family().toStdString();
  return QString::fromStdString(ScaledStyleSheet(m_book.Read(sheet).toStdString(), m_zoom, fixed));
}

void ManualPage::Redo() {
  if (source().isEmpty()) return;
  const int top = cursorForPosition(QPoint(0, 0)).position();
  const int anchor = textCursor().anchor();
  const int caret = textCursor().position();
  reload();
  QTextCursor cursor = textCursor();
  cursor.setPosition(anchor);
  cursor.setPosition(caret, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
  const QRectF block = document()->documentLayout()->blockBoundingRect(document()->findBlock(top));
  verticalScrollBar()->setValue(top == 0 ? 0 : static_cast<int>(block.top()));
}

// Marks

void ManualPage::OnSourceChanged(const QUrl& url) {
  UseStyledHeadings(*document());
  // `source` still tells the page before.
  const bool isSame = url.matches(m_shown, QUrl::RemoveFragment);
  m_shown = url;
  if (isSame) {
    Mark(m_markedTexts, m_markedWordsOnly);
  } else {
    Mark({}, false);
  }
  if (url.hasFragment()) ShowAnchor(url.fragment());
}

/// The row of a table is marked and shown with the rows above it, a heading with some air.
void ManualPage::ShowAnchor(const QString& anchor) {
  const QTextCursor place = AnchorIn(*document(), anchor);
  if (place.isNull()) return;
  const bool isRow = place.currentTable() != nullptr;
  ScrollTo(place, isRow ? viewport()->height() / kRowsAbove : kAirAbove);
  if (!isRow) return;
  QTextCursor row = place;
  row.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  m_marks = {row};
  ShowMarks();
}

void ManualPage::ScrollTo(const QTextCursor& place, int above) {
  verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(place).top() - above);
}

void ManualPage::MarkWords(const QStringList& words) {
  Mark(words, true);
  const auto next = std::find_if(m_marks.cbegin(), m_marks.cend(),
                                 [this](const QTextCursor& mark) { return cursorRect(mark).top() >= 0; });
  if (next != m_marks.cend() && !viewport()->rect().contains(cursorRect(*next)))
    ScrollTo(*next, viewport()->height() / kRowsAbove);
}

int ManualPage::MarkText(const QString& text) {
  Mark(text.isEmpty() ? QStringList() : QStringList(text), false);
  return static_cast<int>(m_marks.size());
}

void ManualPage::Mark(const QStringList& texts, bool wordsOnly) {
  m_markedTexts = texts;
  m_markedWordsOnly = wordsOnly;
  m_marks.clear();
  for (const QString& text : texts) {
    for (QTextCursor at = document()->find(text, 0); !at.isNull(); at = document()->find(text, at)) {
      const QChar before = document()->characterAt(at.selectionStart() - 1);
      if (!wordsOnly || !before.isLetterOrNumber()) m_marks.append(at);
    }
  }
  std::sort(m_marks.begin(), m_marks.end());
  ShowMarks();
}

void ManualPage::ShowMarks() {
  QList<QTextEdit::ExtraSelection> selections;
  for (const QTextCursor& mark : m_marks) {
    QTextCharFormat format;
    format.setBackground(IsDark() ? kDarkMark : kLightMark);
    selections.append({mark, format});
  }
  setExtraSelections(selections);
}

int ManualPage::GoToMark(bool backwards, bool again) {
  if (m_marks.isEmpty()) return 0;
  const int start = textCursor().selectionStart();
  qsizetype chosen = 0;
  if (backwards) {
    const auto behind = std::find_if(m_marks.cbegin(), m_marks.cend(),
                                     [start](const QTextCursor& m) { return m.selectionStart() >= start; });
    chosen = behind == m_marks.cbegin() ? m_marks.size() - 1 : behind - m_marks.cbegin() - 1;
  } else {
    const int from = again || !textCursor().hasSelection() ? start : start + 1;
    const auto next = std::find_if(m_marks.cbegin(), m_marks.cend(),
                                   [from](const QTextCursor& m) { return m.selectionStart() >= from; });
    if (next != m_marks.cend()) chosen = next - m_marks.cbegin();
  }
  setTextCursor(m_marks[chosen]);
  ensureCursorVisible();
  return static_cast<int>(chosen) + 1;
}

// Events

void ManualPage::wheelEvent(QWheelEvent* event) {
  if ((event->modifiers() & Qt::ControlModifier) == 0) return QTextBrowser::wheelEvent(event);
  const int turned = event->angleDelta().y();
  if (turned != 0) SetZoom(m_zoom + (turned > 0 ? kZoomStep : -kZoomStep));
  event->accept();
}

void ManualPage::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::BackButton) return backward();
  if (event->button() == Qt::ForwardButton) return forward();
  QTextBrowser::mouseReleaseEvent(event);
}

void ManualPage::resizeEvent(QResizeEvent* event) {
  setLineWrapColumnOrWidth(TextWidth());
  QTextBrowser::resizeEvent(event);
  if (m_pictureWidth != 0 && m_pictureWidth != TextWidth()) Redo();
}

void ManualPage::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Redo();
}

}  // namespace quill
