/* Resources of the whole program. */
#ifndef QUELLIX_IDS_H
#define QUELLIX_IDS_H

#define IDI_quellix 1 /* the lowest icon identifier, so that Explorer shows it for the file */
/* Drawings for 96 DPI; those for higher resolutions follow in steps of a hundred (platform/drawing_size.h). */
#define IDB_banner 1901
#define IDB_picNet 1902
#define IDB_picOpe 1903
#define IDB_about 1904
#define IDB_banner_120 2001
#define IDB_picNet_120 2002
#define IDB_picOpe_120 2003
#define IDB_about_120 2004
#define IDB_banner_144 2101
#define IDB_picNet_144 2102
#define IDB_picOpe_144 2103
#define IDB_about_144 2104
#define IDB_banner_192 2201
#define IDB_picNet_192 2202
#define IDB_picOpe_192 2203
#define IDB_about_192 2204
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
