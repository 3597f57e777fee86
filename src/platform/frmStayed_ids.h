/* The window's template and controls. */
#ifndef QUELLIX_FRMSTAYED_IDS_H
#define QUELLIX_FRMSTAYED_IDS_H

#define IDD_frmStayed 1900
#define IDC_lblLine 1901
#define IDC_lblTally 1902
#define IDC_lstStayed 1903
#define IDC_cmdCopy 1904
#define IDC_cmdCloseStayed 1905

#endif
