#pragma once
#include <QStatusBar>
#include <QWidget>
#include <cstdint>
#include <functional>

class QLabel;

namespace quill {

/// A field of the status bar that paints its text itself: a new text costs one small repaint and no
/// layout, however often it changes.
class StatusPane : public QWidget {
 public:
  /// Wide enough for `widest`; a longer text widens the pane.
  StatusPane(const QString& widest, QWidget* parent);

  void SetText(const QString& text);
  const QString& Text() const { return m_text; }
  /// What a click does while the pane has a text, and what is said of it before. `run` gets the place on the
  /// screen above which a menu may stand.
  void SetAnswer(std::function<QString()> tip, std::function<void(QPoint)> run);
  /// Whether a click does something at this moment; `Answer` does it.
  bool Answers() const { return m_run && isEnabled() && !m_text.isEmpty(); }
  void Answer() { m_run(mapToGlobal(QPoint(0, 0))); }
  /// Of what a click does; empty when it does nothing.
  QString Tip() const { return Answers() ? m_tip() : QString(); }
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitTo(const QString& text);

  std::function<QString()> m_tip;
  std::function<void(QPoint)> m_run;
  bool m_pressed = false;
  QString m_text;
  QString m_widest;
};

enum class PaneOf : uint8_t { kCaret, kLineEnd, kInsert, kReadOnly, kZoom };

/// What the panes show of the active view.
struct StatusFacts {
  int line = 1;
  int column = 1;
  int lineEndStyle = 0;
  bool overwrite = false;
  bool readOnly = false;
  int zoom = 100;  ///< percent
};

/// The status bar: messages at the left, panes at the right.
class StatusBar : public QStatusBar {
 public:
  explicit StatusBar(QWidget* parent = nullptr);

  /// Shows a sentence for a few seconds.
  void Tell(const QString& text);
  /// Null while there is no buffer: the panes are empty or disabled then.
  void Show(const StatusFacts* facts);
  /// How many matches the last search has, "3 of 41"; the pane is there only with a text.
  void ShowMatches(const QString& text);
  const QString& Matches() const { return m_matches->Text(); }
  StatusPane& Pane(PaneOf what) const;

  /// As they stand, from left to right; empty ones included.
  QStringList PaneTexts() const;
  bool IsLineEndPaneEnabled() const { return m_lineEnd->isEnabled(); }

 private:
  StatusPane* AddPane(const QString& widest);

  QLabel* m_ready;
  StatusPane* m_matches;
  StatusPane* m_caret;
  StatusPane* m_lineEnd;
  StatusPane* m_insert;
  StatusPane* m_readOnly;
  StatusPane* m_zoom;
};

}  // namespace quill
