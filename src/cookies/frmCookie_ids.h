/* The window's template and controls. */
#ifndef QUELLIX_FRMCOOKIE_IDS_H
#define QUELLIX_FRMCOOKIE_IDS_H

#define IDD_frmCookie 1600
#define IDC_lblCookies 1601
#define IDC_lstKeeplist 1602
#define IDC_lblKeepList 1603
#define IDC_SafeList 1604
#define IDC_cmdAdd 1605
#define IDC_cmdAddAll 1606
#define IDC_cmdRemove 1607
#define IDC_cmdRemoveAll 1608
#define IDC_cmdRefresh 1609
#define IDC_cmdClose 1610

#endif
