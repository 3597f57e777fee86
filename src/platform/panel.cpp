#include "platform/panel.h"

#include "platform/window_text.h"

namespace platform {

std::string Panel::Caption() const { return TextOfWindow(::GetDlgItem(Handle(), frameId_)); }

}  // namespace platform
