#pragma once
#include <QStringList>
#include <QTextBrowser>
#include <QTextDocument>

namespace quill {

class ManualBook;

/// A page of the manual, in lines that are not too long to be read. It follows the palette, and only links
/// within the manual lead anywhere.
class ManualPage : public QTextBrowser {
  Q_OBJECT

 public:
  static constexpr int kSmallestZoom = 50;  ///< percent
  static constexpr int kLargestZoom = 300;
  static constexpr int kZoomStep = 10;

  /// The book outlives the page.
  explicit ManualPage(const ManualBook& book, QWidget* parent = nullptr);

  int Zoom() const { return m_zoom; }
  /// A number outside the range gives the nearest end of it.
  void SetZoom(int percent);

  /// Marks every place of these texts that begins a word, ignoring case, and scrolls down to the next one
  /// when none is seen. Another page has no marks.
  void MarkWords(const QStringList& words);
  /// Marks every place of a text, ignoring case; how many there are.
  int MarkText(const QString& text);
  /// Selects the next or previous marked place, or the first behind the end of the page; its number from 1,
  /// 0 when nothing is marked. `again` may stay on a place that is selected already.
  int GoToMark(bool backwards, bool again);

  QVariant loadResource(int type, const QUrl& name) override;

 Q_SIGNALS:
  void ZoomChanged(int percent);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  bool IsDark() const;
  int TextWidth() const;
  QVariant LoadPage(const QUrl& url);
  QVariant LoadPicture(const QUrl& url) const;
  QVariant LoadStyle(const QUrl& url) const;
  void Mark(const QStringList& texts, bool wordsOnly);
  void ShowMarks();
  void OnSourceChanged(const QUrl& url);
  void ShowAnchor(const QString& anchor);
  void ScrollTo(const QTextCursor& place, int above);
  /// Reads the page anew; what is at the upper edge stays there.
  void Redo();

  const ManualBook& m_book;
  int m_zoom = 100;
  int m_pictureWidth = 0;  ///< room for which the pictures of the page were fitted; 0 when it has none
  QUrl m_shown;
  QStringList m_markedTexts;
  bool m_markedWordsOnly = false;
  QList<QTextCursor> m_marks;
};

}  // namespace quill
