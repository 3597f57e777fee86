/* The panel's template and controls. A control array's ids follow one another. */
#ifndef QUELLIX_FRACLEAN_IDS_H
#define QUELLIX_FRACLEAN_IDS_H

#define IDD_fraClean 1200
#define IDC_fraClean 1201
#define IDC_cmdClean 1202
#define IDC_CmdCleanReboot 1203
#define IDC_cmdStop 1204
#define IDC_PbarClean 1205
#define IDC_lstCln 1206

#endif
