#include "bench/ScriptGenerator.h"

#include <algorithm>
#include <array>
#include <random>

namespace quill::bench {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int64_t kLinesPerCommonWord = 3;
constexpr int64_t kCommonWordsAhead = 10;  // so that a text that ends in other lines lacks none
constexpr int kDeepestBlock = 3;
constexpr size_t kTypicalLineBytes = 36;

constexpr std::array<std::string_view, 16> kNames = {
    "fuel",  "thrust_y", "my_height", "ground_ent", "score", "lander_vel", "k",          "temp_vec",
    "angle", "wind",     "crash_snd", "player",     "delta", "camera_arc", "game_state", "n"};
constexpr std::array<std::string_view, 10> kCommands = {
    "wait", "vec_set", "vec_scale", "ent_create", "snd_play", "str_cpy", "abs", "random", "sin", "max"};
constexpr std::array<std::string_view, 8> kComments = {"keep the lander above the ground",
                                                       "one unit is a metre",
                                                       "see the table of levels",
                                                       "never below zero",
                                                       "called once in each frame",
                                                       "the wind turns slowly",
                                                       "counts from 0",
                                                       "faster when the tank is empty"};

/// Writes line after line until the wanted number stands there.
class ScriptWriter {
 public:
  explicit ScriptWriter(const ScriptOptions& options) : m_options(options), m_random(options.seed) {}

  std::string Write() {
    m_text.reserve(static_cast<size_t>(m_options.lines) * kTypicalLineBytes);
    while (m_lines < m_options.lines) WriteTopLevel();
    return std::move(m_text);
  }

  std::string WriteOneLine(int64_t bytes) {
    m_text.reserve(static_cast<size_t>(bytes) + kTypicalLineBytes);
    while (static_cast<int64_t>(m_text.size()) < bytes) m_text += Statement() + " ";
    return std::move(m_text);
  }

 private:
  // The engine's own output, not a distribution, whose numbers differ between libraries.
  uint32_t Below(uint32_t limit) { return static_cast<uint32_t>(m_random() % limit); }
  template <size_t n>
  std::string Pick(const std::array<std::string_view, n>& words) {
    return std::string(words[Below(n)]);
  }
  std::string Number() {
    switch (Below(4)) {
      case 0:
        return "0x" + std::to_string(10 + Below(90)) + "F";
      case 1:
        return std::to_string(Below(100)) + "." + std::to_string(Below(100));
      default:
        return std::to_string(Below(1000));
    }
  }
  std::string Id() { return std::to_string(m_nextId++); }

  void Line(std::string_view text) {
    if (m_lines == m_options.lines) return;
    m_text.append(static_cast<size_t>(m_depth), '\t').append(text).append(kLineEnd);
    ++m_lines;
  }

  /// True while fewer common words were written than lines call for.
  bool OwesCommonWord() const {
    return m_commonWords <
           std::min(m_lines / kLinesPerCommonWord + kCommonWordsAhead, m_options.lines / kLinesPerCommonWord);
  }

  void StatementLine() {
    std::string text;
    if (OwesCommonWord()) {
      ++m_commonWords;
      text = Pick(kNames) + " = " + std::string(kCommonWord) + " * " + Number() + " + " + Pick(kNames) + ";";
    } else {
      text = Statement();
    }
    Line(Below(5) < 2 ? text + " // " + Pick(kComments) : text);
  }

  std::string Statement() {
    switch (Below(7)) {
      case 0:
        return Pick(kCommands) + "(" + Pick(kNames) + ", " + Number() + ");";
      case 1:
        return "str_cpy(" + Pick(kNames) + ", \"level " + Number() + " of " + Pick(kNames) + "\");";
      case 2:
        return Pick(kNames) + "[" + Number() + "] = " + Pick(kNames) + " - " + Number() + ";";
      case 3:
        return "if(" + Pick(kNames) + " > " + Number() + ") " + Pick(kNames) + " += " + Number() + ";";
      case 4:
        return "vec_set(" + Pick(kNames) + ".x, vector(" + Number() + ", 0, " + Pick(kNames) + "));";
      case 5:
        return "my." + Pick(kNames) + " = sin(" + Pick(kNames) + ") / " + Number() + ";";
      default:
        return Pick(kNames) + " = (" + Pick(kNames) + " + " + Number() + ") * " + Pick(kNames) + ";";
    }
  }

  void WriteTopLevel() {
    switch (Below(12)) {
      case 0:
        WritePreprocessor();
        break;
      case 1:
        WriteComment();
        break;
      case 2:
        Line("bmap " + Pick(kNames) + "_map" + Id() + " = <" + Pick(kNames) + ".pcx>;");
        break;
      case 3:
        Line("string " + Pick(kNames) + "_str" + Id() + " = \"" + Pick(kComments) + "\";");
        break;
      case 4:
        WritePanel();
        break;
      case 5:
        Line("var " + Pick(kNames) + "_" + Id() + " = " + Number() + "; // " + Pick(kComments));
        break;
      default:
        WriteFunction();
        break;
    }
  }

  void WritePreprocessor() {
    Line("#define MAX_" + Id() + " " + Number());
    Line("");
  }

  void WriteComment() {
    if (!m_options.blockComments) {
      Line("// " + Pick(kComments));
      return;
    }
    Line("/* " + Pick(kComments) + ",");
    Line("   " + Pick(kComments) + " { ( \" */");
  }

  void WritePanel() {
    Line("panel " + Pick(kNames) + "_pan" + Id());
    Line("{");
    ++m_depth;
    Line("pos_x = " + Number() + ";");
    Line("flags = visible, overlay;");
    --m_depth;
    Line("}");
  }

  void WriteFunction() {
    const std::string name = Pick(kNames) + "_" + Id();
    Line(Below(4) == 0 ? "action " + name : "function " + name + "(" + Pick(kNames) + ", amount)");
    Line("{");
    ++m_depth;
    const uint32_t statements = 4 + Below(20);
    for (uint32_t i = 0; i < statements; ++i) WriteInBlock();
    if (Below(2) == 0) Line("return(" + Pick(kNames) + ");");
    --m_depth;
    Line("}");
    Line("");
  }

  void WriteInBlock() {
    const uint32_t kind = Below(10);
    if (kind == 0) {
      Line("// " + Pick(kComments));
    } else if (kind == 1 && m_depth < kDeepestBlock) {
      Line(Below(2) == 0 ? "while(" + Pick(kNames) + " < " + Number() + ") {" : "if(key_space == on) {");
      ++m_depth;
      for (uint32_t i = 2 + Below(4); i > 0; --i) WriteInBlock();
      Line("wait(1);");
      --m_depth;
      Line("}");
    } else {
      StatementLine();
    }
  }

  const ScriptOptions m_options;
  std::mt19937 m_random;
  std::string m_text;
  int64_t m_lines = 0;
  int64_t m_commonWords = 0;
  int m_depth = 0;
  int m_nextId = 1;
};

}  // namespace

std::string GenerateScript(const ScriptOptions& options) {
  return ScriptWriter(options).Write();
}

std::string GenerateLongLine(int64_t bytes) {
  return ScriptWriter({}).WriteOneLine(bytes);
}

}  // namespace quill::bench
