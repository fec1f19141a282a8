#pragma once
#include <memory>
#include <optional>

#include "intel/outline/Definitions.h"
#include "intel/writing/HoverText.h"
#include "text/ui/InputChain.h"

namespace quill {

class ActiveScript;
class ActiveView;
class CommandDatabase;
class CQuillView;

/// Says in a tip what the name in the active view is that the mouse rests on.
class HoverTips : private InputTaker {
 public:
  /// All outlive it.
  HoverTips(ActiveView& active, ActiveScript& script, const CommandDatabase& commands);
  ~HoverTips() override;

 private:
  bool TakeInput(QEvent& event) override;
  std::optional<HoverText> TextAt(CQuillView& view, TextPosition place);
  std::optional<HoverText> TextOf(CQuillView& view, TextPosition place,
                                  const std::shared_ptr<const ScriptFacts>& facts);

  ActiveView& m_active;
  ActiveScript& m_script;
  const CommandDatabase& m_commands;
  /// Made from these facts.
  Definitions m_definitions;
  std::shared_ptr<const ScriptFacts> m_facts;
};

}  // namespace quill
