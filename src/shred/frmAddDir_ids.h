/* The window's template and controls. */
#ifndef QUELLIX_FRMADDDIR_IDS_H
#define QUELLIX_FRMADDDIR_IDS_H

#define IDD_frmAddDir 1800
#define IDC_drvList 1801
#define IDC_dirList 1802
#define IDC_cmdAdd 1605 /* another window has a button of this name; they share the number */
#define IDC_cmdCancel 1803
#define IDC_lblDrive 1804
#define IDC_lblFolders 1805

#endif
