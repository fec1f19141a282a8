#pragma once
#include <QStatusBar>
#include <QWidget>

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
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitTo(const QString& text);

  QString m_text;
  QString m_widest;
};

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
