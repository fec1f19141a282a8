#pragma once
#include <QAbstractScrollArea>
#include <memory>
#include <string>

namespace quill::bench {

/// One editing component under measurement. What a user's hand can do (keys) the scenarios send to
/// `View()` as events; the rest goes through these calls. Lines and columns count from 0.
class EditorDriver {
 public:
  virtual ~EditorDriver() = default;

  /// The component as a window of its own; its viewport is what gets painted.
  virtual QAbstractScrollArea& View() = 0;

  /// Reads a file and shows it, caret and view at its start, nothing to undo. False on failure.
  virtual bool Load(const std::string& path) = 0;
  virtual int LineCount() = 0;
  virtual int LineLength(int line) = 0;
  /// Puts the caret there, without a selection, and makes it visible.
  virtual void GoTo(int line, int column) = 0;
  /// Finds the syntax classes of the whole text anew, without painting.
  virtual void ColourAll() = 0;

  /// Edits as one undo step each. Inserting leaves the view where it is.
  virtual void InsertAt(int line, int column, const std::string& text) = 0;
  virtual void SelectLines(int first, int last) = 0;  ///< from the start of first to the start of last
  virtual void ReplaceSelection(const std::string& text) = 0;
  /// Replaces every hit, case respected, as one undo step; returns their number.
  virtual int ReplaceAll(const std::string& text, const std::string& replacement) = 0;
  virtual void Undo() = 0;

  /// Looks for a text from the start, ignoring case, without a wrap.
  virtual bool Find(const std::string& text) = 0;
  virtual void ScrollSideways(int pixels) = 0;
};

/// Each measuring program links one component, which defines this.
std::unique_ptr<EditorDriver> MakeDriver();

}  // namespace quill::bench
