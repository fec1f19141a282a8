#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "text/buffer/TextPosition.h"
#include "text/search/Search.h"

namespace quill {

class CCrystalTextBuffer;

/// What a find or replace dialog begins with: the view's last search, or else the stored one, which
/// always goes downwards. Text selected within one line replaces the text to find.
SearchRequest SearchToBeginWith(const std::optional<SearchRequest>& last, const SearchRequest& stored,
                                const std::optional<std::string>& selected);

/// The selected text when it lies within one line and is not empty.
std::optional<std::string> SelectedWithinLine(const CCrystalTextBuffer& buffer, TextRange selection);

/// The word that the caret stands in or right behind; empty when there is none.
TextRange WordAround(const CCrystalTextBuffer& buffer, TextPosition caret);

}  // namespace quill
