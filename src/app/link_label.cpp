#include "app/link_label.h"

#include <string>

#include "app/colours.h"
#include "platform/handles.h"
#include "platform/window_text.h"

namespace app {
using namespace platform;

namespace {

UniqueGdiObject UnderlinedFont(HWND window) {
  LOGFONTA font = FontOfWindow(window);
  font.lfUnderline = TRUE;
  return MakeFont(font);
}

}  // namespace

void LinkLabel::Draw(const DRAWITEMSTRUCT& item) const {
  RECT area = item.rcItem;
  ::FillRect(item.hDC, &area, ::GetSysColorBrush(COLOR_BTNFACE));
  const UniqueGdiObject font = UnderlinedFont(Handle());
  const HGDIOBJ before = ::SelectObject(item.hDC, font.get());
  ::SetBkMode(item.hDC, TRANSPARENT);
  ::SetTextColor(item.hDC, LinkColour());
  const std::string text = Text();
  area.left += 2;
  ::DrawTextA(item.hDC, text.c_str(), -1, &area, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  RECT drawn = area;
  ::DrawTextA(item.hDC, text.c_str(), -1, &drawn, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_CALCRECT);
  ::SelectObject(item.hDC, before);
  if ((item.itemState & ODS_FOCUS) == 0) return;
  RECT focus = item.rcItem;
  focus.right = drawn.right + 2;
  ::DrawFocusRect(item.hDC, &focus);
}

}  // namespace app
