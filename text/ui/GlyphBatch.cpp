#include "text/ui/GlyphBatch.h"

#include <QGlyphRun>

namespace quill {

GlyphBatch::Run& GlyphBatch::FindRun(QRgb colour, bool bold) {
  for (m_last = 0; m_last < m_runs.size(); ++m_last) {
    if (m_runs[m_last].colour == colour && m_runs[m_last].bold == bold) return m_runs[m_last];
  }
  return m_runs.emplace_back(Run{colour, bold, {}, {}});
}

void GlyphBatch::Draw(QPainter& painter) {
  for (Run& run : m_runs) {
    if (run.glyphs.empty()) continue;
    QGlyphRun glyphs;
    glyphs.setRawFont(m_font.Face(run.bold));
    glyphs.setRawData(run.glyphs.data(), run.places.data(), static_cast<int>(run.glyphs.size()));
    painter.setPen(QColor::fromRgb(run.colour));
    painter.drawGlyphRun(QPointF(0, 0), glyphs);
    run.glyphs.clear();
    run.places.clear();
  }
}

}  // namespace quill
