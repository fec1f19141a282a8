#pragma once

namespace quill {

/// What must be said to the toolkit before the application object is made.
void PrepareAppearance();

/// Style and palette: the platform's where it has any, else the toolkit's own style, which looks alike
/// everywhere. The environment variable QUILL_COLOUR_SCHEME, "dark" or "light", overrides the platform's
/// palette.
void ApplyAppearance();

}  // namespace quill
