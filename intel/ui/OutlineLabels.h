#pragma once
#include <QString>
#include <string_view>

#include "intel/outline/ScriptFacts.h"

class QAbstractItemView;

namespace quill {

/// A name as rows show it; a monstrous one loses its end, since even a row that cuts it off would have to
/// measure all of it.
QString OutlineLabel(std::string_view text);

/// The tip of a row: its text, also where the row cuts it off, and the place. `file` is that of an
/// `OutlineItem`.
QString OutlineTip(std::string_view text, TextPosition at, int32_t file, const ScriptFacts& facts);

/// Says in an empty view why it is empty; to be called after the view has painted itself.
void PaintEmptyText(QAbstractItemView& view, const QString& text);

}  // namespace quill
