// QPlainTextEdit with a hand-written QSyntaxHighlighter of a script's classes.
#include <QApplication>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSet>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <fstream>
#include <iterator>

#include "bench/EditorDriver.h"
#include "bench/peers/ScriptWords.h"

namespace quill::bench {
namespace {

QSet<QString> WordSet(const char* words) {
  const QStringList list = QString::fromLatin1(words).split(QLatin1Char(' '));
  return {list.begin(), list.end()};
}

QTextCharFormat Coloured(QRgb colour) {
  QTextCharFormat format;
  format.setForeground(QColor(colour));
  return format;
}

bool IsWordCharacter(QChar c) {
  return c.isLetterOrNumber() || c == QLatin1Char('_');
}

/// One pass over a block's characters; the block state tells whether a block comment goes on.
class ScriptHighlighter : public QSyntaxHighlighter {
 public:
  using QSyntaxHighlighter::QSyntaxHighlighter;

 protected:
  void highlightBlock(const QString& text) override {
    const int length = static_cast<int>(text.size());
    setCurrentBlockState(0);
    int i = previousBlockState() == kInComment ? ColourComment(text, 0, 0) : 0;
    bool first = i == 0;
    while (i < length) {
      const QChar c = text[i];
      if (c == QLatin1Char('/') && i + 1 < length && text[i + 1] == QLatin1Char('/')) {
        setFormat(i, length - i, m_comment);
        break;
      }
      if (c == QLatin1Char('/') && i + 1 < length && text[i + 1] == QLatin1Char('*')) {
        i = ColourComment(text, i, i + 2);
      } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
        i = ColourString(text, i, c);
      } else if (c == QLatin1Char('#') && first) {
        setFormat(i, length - i, m_preprocessor);
        break;
      } else if (IsWordCharacter(c)) {
        i = ColourWord(text, i);
      } else {
        ++i;
      }
      first = first && c.isSpace();
    }
  }

 private:
  static constexpr int kInComment = 1;

  int ColourComment(const QString& text, int start, int from) {
    const auto end = text.indexOf(QLatin1String("*/"), from);
    const int stop = end < 0 ? static_cast<int>(text.size()) : static_cast<int>(end) + 2;
    setCurrentBlockState(end < 0 ? kInComment : 0);
    setFormat(start, stop - start, m_comment);
    return stop;
  }
  int ColourString(const QString& text, int start, QChar quote) {
    const auto end = text.indexOf(quote, start + 1);
    const int stop = end < 0 ? static_cast<int>(text.size()) : static_cast<int>(end) + 1;
    setFormat(start, stop - start, m_string);
    return stop;
  }
  int ColourWord(const QString& text, int start) {
    int stop = start;
    while (stop < text.size() && IsWordCharacter(text[stop])) ++stop;
    const QString word = text.mid(start, stop - start).toLower();
    if (m_keywords.contains(word)) {
      setFormat(start, stop - start, m_keyword);
    } else if (m_commands.contains(word)) {
      setFormat(start, stop - start, m_command);
    } else if (word[0].isDigit()) {
      setFormat(start, stop - start, m_number);
    }
    return stop;
  }

  const QSet<QString> m_keywords = WordSet(kScriptKeywords);
  const QSet<QString> m_commands = WordSet(kScriptCommands);
  const QTextCharFormat m_keyword = Coloured(qRgb(0, 0, 255));
  const QTextCharFormat m_command = Coloured(qRgb(136, 0, 0));
  const QTextCharFormat m_comment = Coloured(qRgb(0, 128, 0));
  const QTextCharFormat m_number = Coloured(qRgb(160, 0, 160));
  const QTextCharFormat m_string = Coloured(qRgb(104, 104, 104));
  const QTextCharFormat m_preprocessor = Coloured(qRgb(0, 128, 192));
};

class PlainTextDriver : public EditorDriver {
 public:
  PlainTextDriver() : m_highlighter(m_view.document()) {
    m_view.setFont(QApplication::font());
    m_view.setLineWrapMode(QPlainTextEdit::NoWrap);
    QObject::connect(&m_view, &QPlainTextEdit::cursorPositionChanged, [this] { HighlightCaretLine(); });
    m_view.setTabStopDistance(3 * m_view.fontMetrics().horizontalAdvance(QLatin1Char(' ')));
  }

  QAbstractScrollArea& View() override { return m_view; }

  bool Load(const std::string& path) override {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (!file) return false;
    m_view.setPlainText(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
    return true;
  }

  int LineCount() override { return m_view.blockCount(); }
  int LineLength(int line) override { return Block(line).length() - 1; }
  void GoTo(int line, int column) override {
    QTextCursor cursor(Block(line));
    cursor.setPosition(cursor.position() + column);
    m_view.setTextCursor(cursor);
    m_view.ensureCursorVisible();
  }
  void ColourAll() override { m_highlighter.rehighlight(); }

  void InsertAt(int line, int column, const std::string& text) override {
    QTextCursor cursor(Block(line));
    cursor.setPosition(cursor.position() + column);
    cursor.insertText(QString::fromStdString(text));
  }
  void SelectLines(int first, int last) override {
    QTextCursor cursor(Block(first));
    cursor.setPosition(Block(last).position(), QTextCursor::KeepAnchor);
    m_view.setTextCursor(cursor);
  }
  void ReplaceSelection(const std::string& text) override {
    m_view.textCursor().insertText(QString::fromStdString(text));
  }
  int ReplaceAll(const std::string& text, const std::string& replacement) override {
    const QString from = QString::fromStdString(text);
    const QString to = QString::fromStdString(replacement);
    QTextCursor edit(m_view.document());
    edit.beginEditBlock();
    int hits = 0;
    QTextCursor hit = m_view.document()->find(from, 0, QTextDocument::FindCaseSensitively);
    while (!hit.isNull()) {
      hit.insertText(to);
      ++hits;
      hit = m_view.document()->find(from, hit, QTextDocument::FindCaseSensitively);
    }
    edit.endEditBlock();
    return hits;
  }
  void Undo() override { m_view.undo(); }

  bool Find(const std::string& text) override {
    return !m_view.document()->find(QString::fromStdString(text), 0).isNull();
  }
  void ScrollSideways(int pixels) override {
    QScrollBar* bar = m_view.horizontalScrollBar();
    bar->setValue(bar->value() + pixels);
  }

 private:
  void HighlightCaretLine() {
    QTextEdit::ExtraSelection line;
    line.format.setBackground(Qt::yellow);
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = m_view.textCursor();
    line.cursor.clearSelection();
    m_view.setExtraSelections({line});
  }
  QTextBlock Block(int line) { return m_view.document()->findBlockByNumber(line); }

  QPlainTextEdit m_view;
  ScriptHighlighter m_highlighter;
};

}  // namespace

std::unique_ptr<EditorDriver> MakeDriver() {
  return std::make_unique<PlainTextDriver>();
}

}  // namespace quill::bench
