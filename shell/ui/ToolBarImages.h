#pragma once
#include <string>

namespace quill {

class CommandRouter;

/// Gives the toolbar commands their images from "buttons_qil.pcx" in the program folder: a strip with one
/// image a button, in the order of the toolbars, whose first pixel's colour is transparent. Without a
/// usable strip, or behind its end, the commands keep the built-in icons.
void LoadToolBarImages(const std::string& programFolder, CommandRouter& router);

}  // namespace quill
