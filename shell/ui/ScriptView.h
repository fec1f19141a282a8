#pragma once

namespace quill {

class CCrystalTextView;
class CommandDatabase;
class CQuillDoc;
class KeywordDatabase;

/// The view that scripts are shown in. The databases outlive it.
CCrystalTextView* MakeScriptView(CQuillDoc& document, const KeywordDatabase& keywords,
                                 const CommandDatabase& commands);

}  // namespace quill
