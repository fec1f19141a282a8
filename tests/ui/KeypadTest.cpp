// Keys of the number pad that have a command of their own, beside their twins among the main keys.
#include <QTreeWidget>

#include "shell/KeyBindings.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class Keypad : public ScreenFixture {
 protected:
  void StartWith(const KeyBindings& bindings) {
    AppProfile profile(m_settings);
    WriteBinary(profile, profile::kKeyboard, bindings.ToBytes());
    Start();
    Open("a.vsl", "function f()\r\n{\r\n\tx;\r\n}\r\nfunction g()\r\n{\r\n\ty;\r\n}\r\nlast");
    Pump();
  }
  /// In which row of the screen the last line stands, and the zoom.
  std::string State() {
    const std::string panes = Panes();
    return std::to_string(View().PointOf({8, 0}).y() / View().LineHeight()) + panes.substr(panes.rfind('|'));
  }
};

TEST_F(Keypad, ItsPlusAndMinusFoldWhileThoseOfTheMainKeysZoom) {
  StartWith({});
  const struct {
    const char* key;
    const char* state;
  } rows[] = {
      {"Ctrl+Num+-", "4|100%"}, {"Ctrl++", "4|110%"}, {"Ctrl+Num+-", "4|110%"}, {"Ctrl+Num++", "8|110%"},
      {"Ctrl+-", "8|100%"},     {"Ctrl+-", "8|90%"},  {"Ctrl+Num+-", "4|90%"},
  };
  for (const auto& row : rows) {
    Press(row.key);
    EXPECT_EQ(State(), row.state) << row.key;
  }
  Outline().setFocus();
  Press("Ctrl+Num++");
  EXPECT_EQ(State(), "8|90%") << "from a bar beside the text";
  EXPECT_EQ(Line(), "function f()") << "nothing was typed";
}

TEST_F(Keypad, AKeyThatTheUserGaveAwayGoesWithHim) {
  KeyBindings bindings;
  bindings.Set("view.zoomIn", {"Ctrl+Num++"});
  bindings.Set("outline.collapseAll", {"F7"});
  StartWith(bindings);
  Press("Ctrl+Num++");
  EXPECT_EQ(State(), "8|110%") << "the number pad's is the user's";
  Press("Ctrl+Num+-");
  EXPECT_EQ(State(), "8|100%") << "nothing else has it: as its twin";
  Press("F7");
  EXPECT_EQ(State(), "4|100%");
}

}  // namespace
}  // namespace quill
