/* The panel's template and controls. A control array's ids follow one another. */
#ifndef QUELLIX_FRASCHEDULEMANAGER_IDS_H
#define QUELLIX_FRASCHEDULEMANAGER_IDS_H

#define IDD_fraScheduleManager 1400
#define IDC_fraScheduleManager 1401
#define IDC_Frame1 1402
#define IDC_cmdRunInv 1403
#define IDC_lblHideKeys 1404
#define IDC_Label5 1405
#define IDC_Label4 1406
#define IDC_cmdUpgrade 1407
#define IDC_fraStatUp 1408
#define IDC_chkStartUp_0 1409
#define IDC_chkStartUp_1 1410
#define IDC_chkStartUp_2 1411
#define IDC_fraPanic 1412
#define IDC_Label3 1413
#define IDC_cmbBoss 1414
#define IDC_cmbBossSet 1415
#define IDC_lblRestore 1416
#define IDC_fraSchedule 1417
#define IDC_chkShEnable 1418
#define IDC_fraSchedule1 1419
#define IDC_chkRbt 1420
#define IDC_CHKieclose 1421
#define IDC_optSchedule_0 1422
#define IDC_optSchedule_1 1423
#define IDC_optSchedule_2 1424
#define IDC_dtpTime 1425
#define IDC_txtMinutes 1426
#define IDC_VSUpDown 1427
#define IDC_lblmin 1428

#endif
