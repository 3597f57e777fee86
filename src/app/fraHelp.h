// The panel "Help": the links to the manual and the contact page, and who makes the program.
#pragma once

#include <optional>

#include "app/fraHelp_ids.h"
#include "app/link_label.h"
#include "app/quellix_ids.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/panel.h"

namespace app {
using namespace platform;

class fraHelp final : public Panel {
 public:
  fraHelp() : Panel(IDD_fraHelp, IDC_fraHelp) {}

  // The manual beside the program, and the help page where there is none.
  void OpenHelp();

 private:
  void OnInit() override;
  void OnClick(int id) override;
  std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  void OpenPage(const char* address);

  LinkLabel Label16{*this, IDC_Label16};
  LinkLabel Label22{*this, IDC_Label22};
  Label lblAbout{*this, IDC_lblAbout};
  Picture picAbout{*this, IDC_picAbout, IDB_about};
};

}  // namespace app
