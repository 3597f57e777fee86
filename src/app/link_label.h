// A label that opens a page: an owner-drawn button, so that the keyboard reaches it, in the colours of a link.
#pragma once

#include "platform/controls.h"
#include "platform/dialog.h"

namespace app {
using namespace platform;

class LinkLabel : public Control {
 public:
  using Control::Control;

  // Answers the dialog's WM_DRAWITEM for this control.
  void Draw(const DRAWITEMSTRUCT& item) const;
};

}  // namespace app
