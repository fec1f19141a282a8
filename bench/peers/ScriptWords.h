#pragma once

namespace quill::bench {

// The words that both peers colour, blank-separated and in lower case.
inline constexpr const char* kScriptKeywords =
    "var var_info var_nsave string bmap text panel view entity skill define starter sound material sky font "
    "window function action if else while for do return break continue goto switch case default include on "
    "off my you me null pos_x pos_y layer flags visible overlay";
inline constexpr const char* kScriptCommands =
    "wait vec_set vec_scale vec_add vec_sub ent_create ent_move ent_remove snd_play snd_stop str_cpy str_cat "
    "str_len abs random sin cos tan sqrt min max clamp sign sleep exit vector";
// Names that the scripts themselves define.
inline constexpr const char* kScriptNames =
    "fuel thrust_y my_height ground_ent score lander_vel k temp_vec angle wind crash_snd player delta "
    "camera_arc game_state n old_speed";

}  // namespace quill::bench
