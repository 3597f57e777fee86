/* The panel's template and controls. A control array's ids follow one another. */
#ifndef QUELLIX_FRAHELP_IDS_H
#define QUELLIX_FRAHELP_IDS_H

#define IDD_fraHelp 1500
#define IDC_fraHelp 1501
#define IDC_Frame3 1502
#define IDC_lblHelp 1503
#define IDC_Label16 1504
#define IDC_Frame9 1505
#define IDC_lblContact 1506
#define IDC_Label22 1507
#define IDC_Frame2 1508
#define IDC_picAbout 1509
#define IDC_lblAbout 1510

#endif
