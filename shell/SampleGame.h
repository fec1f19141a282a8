#pragma once
#include <string>

namespace quill {

/// The main script of the game that is installed with the program, found from the program's folder; empty
/// when it is not there.
std::string SampleGame(const std::string& programFolder);

}  // namespace quill
