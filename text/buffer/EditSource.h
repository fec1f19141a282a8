#pragma once
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/buffer/BufferObserver.h"

namespace quill {

/// What follows an edit of the user's, such as indenting a new line by itself.
class EditHook {
 public:
  virtual ~EditHook() = default;
  /// An undo group was closed; `action` and `text` are those of its last record.
  virtual void OnUndoGroupClosed(int32_t action, std::string_view text) = 0;
};

/// Who edits a buffer: the observer that is named as the source of the change, and the hook for when the
/// edit is an undo group of its own. Either may be null.
struct EditSource {
  EditSource() = default;
  EditSource(std::nullptr_t) {}
  EditSource(const BufferObserver* editor) : observer(editor) {}
  /// An editor that has a hook, too, is both.
  template <class Editor>
  requires std::derived_from<Editor, BufferObserver> && std::derived_from<Editor, EditHook> EditSource(
      Editor* editor)
      : observer(editor), hook(editor) {}

  const BufferObserver* observer = nullptr;
  EditHook* hook = nullptr;
};

}  // namespace quill
