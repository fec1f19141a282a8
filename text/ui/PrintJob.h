#pragma once
#include <QString>
#include <functional>

#include "text/view/PrintLayout.h"

class QPagedPaintDevice;
class QPrinter;

namespace quill {

class CCrystalTextView;

/// Prints a view's text in its font and colours, made readable on white paper. Each page carries
/// "Page %d/%d".
class PrintJob {
 public:
  /// `title` stands beside the page number. Called before each page with the page (from 1) and the page
  /// count; false stops the printing.
  using Progress = std::function<bool(int page, int count)>;

  PrintJob(CCrystalTextView& view, const PageMargins& margins, QString title);

  /// Prints the pages that the printer was asked for; to a file when that is what it prints to. False
  /// when the printer could not begin or the printing was stopped.
  bool Print(QPrinter& printer, const Progress& progress = {});

 private:
  CCrystalTextView& m_view;
  PageMargins m_margins;
  QString m_title;
};

}  // namespace quill
