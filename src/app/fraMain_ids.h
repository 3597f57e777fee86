/* The panel's template and controls. A control array's ids follow one another, each array in a decade of its own. */
#ifndef QUELLIX_FRAMAIN_IDS_H
#define QUELLIX_FRAMAIN_IDS_H

#define IDD_fraMain 1100
#define IDC_fraMain 1101
#define IDC_fraIEsettings 1102
#define IDC_fraWindows 1103
#define IDC_fraNetsacpe 1104
#define IDC_fraOpera 1105
#define IDC_chkIEsettings_0 1110
#define IDC_chkIEsettings_1 1111
#define IDC_chkIEsettings_2 1112
#define IDC_chkIEsettings_3 1113
#define IDC_chkIEsettings_4 1114
#define IDC_chkIEsettings_5 1115
#define IDC_chkIEsettings_6 1116
#define IDC_chkIEsettings_7 1117
#define IDC_chkIEsettings_8 1118
#define IDC_chkWinsettings_0 1120
#define IDC_chkWinsettings_1 1121
#define IDC_chkWinsettings_2 1122
#define IDC_chkWinsettings_3 1123
#define IDC_chkWinsettings_4 1124
#define IDC_chkWinsettings_5 1125
#define IDC_chkWinsettings_6 1126
#define IDC_chkWinsettings_7 1127
#define IDC_chkWinsettings_8 1128
#define IDC_chkNetsettings_0 1130
#define IDC_chkNetsettings_1 1131
#define IDC_chkNetsettings_2 1132
#define IDC_chkNetsettings_3 1133
#define IDC_chkOsettings_0 1140
#define IDC_chkOsettings_1 1141
#define IDC_chkOsettings_2 1142
#define IDC_cmdCookiesOption 1150
#define IDC_picNet 1151
#define IDC_picOpe 1152
#define IDC_cmdSelectAll 1153
#define IDC_cmdDeselectAll 1154
#define IDC_cmdClean_2 1155
#define IDC_Label6 1156
#define IDC_Label1 1157

#endif
