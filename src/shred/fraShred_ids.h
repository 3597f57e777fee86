/* The panel's template and controls. A control array's ids follow one another. */
#ifndef QUELLIX_FRASHRED_IDS_H
#define QUELLIX_FRASHRED_IDS_H

#define IDD_fraShred 1300
#define IDC_fraShred 1301
#define IDC_fraCustomItems 1302
#define IDC_lblFileShred 1303
#define IDC_lstFileShred 1304
#define IDC_lblFolder 1305
#define IDC_lstFolder 1306
#define IDC_cmdFileShred 1307
#define IDC_cmdClear 1308
#define IDC_cmdshredFiles 1309
#define IDC_cmdAddFolder 1310
#define IDC_cmdFolClear 1311
#define IDC_cmdShredFolder 1312
#define IDC_cmdShredAll 1313
#define IDC_lblLev 1314
#define IDC_txtLev 1315
#define IDC_UpDown1 1316
#define IDC_FileCount 1317
#define IDC_txtMessage 1318
#define IDC_Frame4 1319
#define IDC_PbarShred 1320
#define IDC_lStat 1321
#define IDC_Frame11 1322
#define IDC_lstFiles 1323
#define IDC_cmdCustomAdd 1324
#define IDC_cmdCustomDeleteAll 1325
#define IDC_chkOptions 1326
#define IDC_lblLevel 1327
#define IDC_txtLevel 1328
#define IDC_UpDown2 1329

#endif
