/* The window's template and controls. */
#ifndef QUELLIX_FRMWARNING_IDS_H
#define QUELLIX_FRMWARNING_IDS_H

#define IDD_frmWarning 1700
#define IDC_lblWarning 1701
#define IDC_chkWarning 1702
#define IDC_cmdContinue 1703
#define IDC_imgWarning 1704

#endif
