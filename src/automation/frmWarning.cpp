#include "automation/frmWarning.h"

#include "automation/warning_text.h"
#include "platform/runtime_error.h"
#include "settings/schema.h"
#include "settings/settings_store.h"

namespace automation {
using namespace platform;

void frmWarning::ShowModal(HWND owner) { RunModal(IDD_frmWarning, owner); }

void frmWarning::OnInit() {
  lblWarning.SetText(kInvisibleWarning);
  ::SendDlgItemMessageA(Handle(), IDC_imgWarning, STM_SETICON,
                        reinterpret_cast<WPARAM>(::LoadIconA(nullptr, MAKEINTRESOURCEA(32515))), 0);  // IDI_WARNING
  MoveFocusTo(::GetDlgItem(Handle(), IDC_cmdContinue));
}

void frmWarning::OnClick(int id) {
  if (id != IDC_cmdContinue) return;
  if (chkWarning.Value() == 1) resumeNext([] { settings::SaveSetting(settings::Setting::Message, "Dont"); });
  Close();
}

}  // namespace automation
