// The controls of the program on which the driver is tried.
#pragma once

#define IDC_cmdCount 101
#define IDC_cmdAsk 102
#define IDC_cmdSwitch 103
#define IDC_cmdBusy 104
#define IDC_cmdDisabled 105
#define IDC_cmdFile 106
#define IDC_lblResult 107
#define IDC_stBar 108
#define IDC_lblKeys 109

#define IDC_chkOption 200
#define IDC_chkOption_0 (IDC_chkOption + 0)
#define IDC_chkOption_1 (IDC_chkOption + 1)
#define IDC_optMode_0 210
#define IDC_optMode_1 211
#define IDC_lstItems 220
#define IDC_txtName 221
#define IDC_cmbPick 222

#define IDC_prgWork 301
#define IDC_dtpTime 302
#define IDC_txtLevel 303
#define IDC_updLevel 304
#define IDC_lblShared 310  // on both panels
