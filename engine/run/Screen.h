// The size, color and title of the game's window, from what the script says of them in several places.
#pragma once

#include <string_view>

#include "engine/scene/Scene.h"

namespace korvel {

class Session;

/// Takes a size that was set by assigning video_mode or a member of the window that is shown.
void FollowScreen(Session& session);

/// Gives the window another size in pixels, cut to what the desktop can show, at most 4096. Returns true when
/// the size is as wanted.
bool SetScreenSize(Session& session, int width, int height);

/// Shows a window definition: its title, its color, and its size where it has one.
void ShowWindow(Session& session, Window& window);

Color ColorOf(const Screen& screen);
std::string_view TitleOf(const Screen& screen);

/// The rectangle that a view fills; a size of 0 stands for the rest of the window.
class Camera;
Camera CameraOf(const View& view, const Screen& screen);

/// Writes the picture of the frame to the file that screen_shot opened.
void WriteShot(Session& session);

}  // namespace korvel
