#include "shell/ui/ScriptView.h"

#include "intel/CommandDatabase.h"
#include "intel/KeywordDatabase.h"
#include "shell/ui/QuillDoc.h"
#include "text/ui/CrystalTextView.h"

namespace quill {
namespace {

/// Shows a script in the colours of its language.
class ScriptView final : public CCrystalTextView {
 public:
  ScriptView(CQuillDoc& document, const KeywordDatabase& keywords, const CommandDatabase& commands)
      : m_document(document), m_keywords(keywords), m_commands(commands) {}

  WordSets Words() const override {
    return {&m_keywords.SetFor(m_document.File().Path()), &m_commands.Names(), nullptr, nullptr};
  }
  uint32_t ColourLine(uint32_t state, int32_t line, TextBlock* blocks, int32_t* count) override {
    return quill::ColourLine(*Buffer(), Words(), state, line, blocks, count);
  }
  CommentMarkers GetCommentMarkers() const override { return kScriptCommentMarkers; }

 private:
  CQuillDoc& m_document;
  const KeywordDatabase& m_keywords;
  const CommandDatabase& m_commands;
};

}  // namespace

CCrystalTextView* MakeScriptView(CQuillDoc& document, const KeywordDatabase& keywords,
                                 const CommandDatabase& commands) {
  return new ScriptView(document, keywords, commands);
}

}  // namespace quill
