#pragma once
#include <QList>
#include <QPainter>
#include <QPointF>
#include <vector>

#include "text/ui/EditorFont.h"

namespace quill {

/// Collects the glyphs of a repaint by colour and face, whatever line they belong to, and draws each
/// kind as one glyph run: a page of text costs a handful of drawing calls.
class GlyphBatch {
 public:
  explicit GlyphBatch(const EditorFont& font) : m_font(font) {}

  /// `baseline` in logical pixels. Blanks need not be added.
  void Add(QRgb colour, bool bold, char c, QPointF baseline) {
    Run& run = RunOf(colour, bold);
    run.glyphs.push_back(m_font.Glyph(c, bold));
    run.places.push_back(baseline);
  }
  /// Draws and empties the batch.
  void Draw(QPainter& painter);

 private:
  struct Run {
    QRgb colour;
    bool bold;
    std::vector<quint32> glyphs;
    std::vector<QPointF> places;
  };
  Run& RunOf(QRgb colour, bool bold) {
    if (m_last < m_runs.size() && m_runs[m_last].colour == colour && m_runs[m_last].bold == bold) {
      return m_runs[m_last];
    }
    return FindRun(colour, bold);
  }
  Run& FindRun(QRgb colour, bool bold);

  const EditorFont& m_font;
  std::vector<Run> m_runs;
  size_t m_last = 0;
};

}  // namespace quill
