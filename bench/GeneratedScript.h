#pragma once
#include <cstddef>
#include <iterator>
#include <string>

namespace quill::bench {

/// A script of about `bytes` bytes and 33 bytes a line, CR LF ends, the same for each run: functions with
/// blocks, comments, strings and numbers.
inline std::string GeneratedScript(size_t bytes) {
  static const char* const kLines[] = {"// moves the lander, called once a frame",
                                       "function lander_move()",
                                       "{",
                                       "\tvar speed = 0.125;",
                                       "\twhile(player != NULL)",
                                       "\t{",
                                       "\t\tif(key_force.x > 0.5) { speed += 2; }",
                                       "\t\tvec_set(temp.x, my.x); /* a copy */",
                                       "\t\tstr_cpy(name_str, \"eagle one\");",
                                       "\t\tmy.pan += speed * time_step;",
                                       "\t\twait(1);",
                                       "\t}",
                                       "}",
                                       ""};
  std::string text;
  text.reserve(bytes + 64);
  for (size_t i = 0; text.size() < bytes; ++i) {
    text += kLines[i % std::size(kLines)];
    if (i % 14 < 2) text += " " + std::to_string(i) + " of a generated script";
    text += "\r\n";
  }
  return text;
}

}  // namespace quill::bench
