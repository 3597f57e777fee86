// The text of the window "Warning". The quotes around the key names belong to the text, and nothing follows the last one.
#pragma once

namespace automation {

inline constexpr char kInvisibleWarning[] =
    "Clicking this button will make Quellix run invisibly. "
    "You can also press \"Ctrl + H\" to hide. "
    "To unhide the application press \"Ctrl + U\"";

}  // namespace automation
