#pragma once
#include <QFont>
#include <QString>
#include <memory>

#include "base/IoResult.h"
#include "text/parse/WordClasses.h"
#include "text/ui/PrintTarget.h"
#include "text/ui/ViewPalette.h"
#include "text/view/PrintLayout.h"

namespace quill {

class CCrystalTextView;
class PrintPages;

/// Prints a view's text in its font and colours, made readable on white paper. Each page carries
/// "Page %d/%d". It works on a copy and in steps: what happens to the view and its text in the meantime
/// changes nothing.
class PrintJob {
 public:
  /// `title` stands beside the page number.
  PrintJob(CCrystalTextView& view, const PageMargins& margins, QString title);
  ~PrintJob();

  /// The pages that the target was asked for will be printed to it. False when it cannot be printed to.
  bool Begin(std::unique_ptr<PrintTarget> target);

  enum class State {
    kPreparing,  ///< the text is being cut into pages
    kPrinting,
    kDone,
    kFailed,
  };
  /// Goes on for some milliseconds, a page at least.
  State Step(int milliseconds);
  State CurrentState() const { return m_state; }
  /// Leaves nothing behind, as far as the target can take it back. A job that goes unfinished does the same.
  void Cancel();

  const QString& Title() const { return m_source.title; }
  /// What is done of `All`: lines while preparing, then pages.
  int Done() const;
  int All() const;
  /// Why it failed; empty when the target did not say.
  const std::string& Failure() const { return m_failure; }

  /// What is printed and how.
  struct Source {
    TextCopy text;
    WordClassesCopy words;
    ViewPalette palette;
    QFont font;  ///< as large as on paper
    int32_t tabSize;
    PageMargins margins;
    QString title;
  };

 private:
  State Fail(const std::string& why);
  State Finish();

  Source m_source;
  std::unique_ptr<PrintTarget> m_target;
  std::unique_ptr<PrintPages> m_pages;
  State m_state = State::kFailed;  ///< until it has begun
  int32_t m_first = 0;             ///< pages from 0, the last one excluded
  int32_t m_next = 0;
  int32_t m_last = 0;
  std::string m_failure;
};

}  // namespace quill
