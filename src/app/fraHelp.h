// The panel "Help": the links to the help and contact pages, and what the program is.
#pragma once

#include "app/fraHelp_ids.h"
#include "app/link_label.h"
#include "platform/dialog.h"
#include "platform/handles.h"

namespace app {
using namespace platform;

class fraHelp : public Dialog {
 public:
  HWND Create(HWND parent);

 private:
  void OnInit() override;
  void OnCommand(int id, int notification) override;
  bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
  void OpenPage(const char* address);

  LinkLabel Label16{*this, IDC_Label16};
  LinkLabel Label22{*this, IDC_Label22};
  UniqueGdiObject picAbout_;
};

}  // namespace app
