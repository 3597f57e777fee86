/* Resources of the whole program. */
#ifndef QUELLIX_IDS_H
#define QUELLIX_IDS_H

#define IDI_quellix 1 /* the lowest icon identifier, so that Explorer shows it for the file */
#define IDB_banner 1901
#define IDB_picNet 1902
#define IDB_picOpe 1903
#define IDB_about 1904
#define IDM_mPopupSys 1910
#define IDM_mPopClean 1911
#define IDM_mPopRestore 1912
#define IDM_mPopExit 1913
#define IDA_keys 1920
#define IDA_panel_0 1921
#define IDA_panel_1 1922
#define IDA_panel_2 1923
#define IDA_panel_3 1924
#define IDA_panel_4 1925
#define IDA_nextPanel 1926
#define IDA_previousPanel 1927
#define IDA_help 1928

#endif
