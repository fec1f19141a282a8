#pragma once
#include <QTextEdit>
#include <string_view>

#include "text/ui/ViewPalette.h"

namespace quill {

class CQuillView;

/// Shows a line of script in the colours and the font of a view, or a remark in its place.
class ScriptPreview : public QTextEdit {
  Q_OBJECT

 public:
  /// `view` outlives it.
  explicit ScriptPreview(const CQuillView& view, QWidget* parent = nullptr);

  void ShowScript(std::string_view line);
  void ShowRemark(const QString& text);

 private:
  QString Coloured(std::string_view line) const;

  const CQuillView& m_view;
  ViewPalette m_palette;
};

}  // namespace quill
