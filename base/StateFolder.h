#pragma once
#include <string>

namespace quill {

/// "$XDG_STATE_HOME/quill", by default "~/.local/state/quill": what the program keeps of its runs. Empty when
/// neither is known. The folder need not exist yet.
std::string StateFolder();

}  // namespace quill
