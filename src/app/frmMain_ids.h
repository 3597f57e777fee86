/* The main window's template and controls. */
#ifndef QUELLIX_FRMMAIN_IDS_H
#define QUELLIX_FRMMAIN_IDS_H

#define IDD_frmMain 1000
#define IDC_cmdDefault 1001
#define IDC_cmdCleenFrame 1002
#define IDC_cmdSecureDelk 1003
#define IDC_cmdSchedule 1004
#define IDC_cmdHelp 1005
#define IDC_Image1 1006
#define IDC_Picture1 1007
#define IDC_stBar 1008
#define IDC_panel 1009

#endif
