"""What each panel of the main window holds: its navigation button, its frames, and every control with its caption."""
from typing import NamedTuple

from tests.harness.items import ITEMS


class Panel(NamedTuple):
    button: str
    caption: str
    frame: str
    title: str
    status: str
    # Frame to what is in it: control to caption; None where the text is the program's own choice.
    groups: dict

    def controls(self) -> dict:
        return {name: text for group in self.groups.values() for name, text in group.items()}


def _boxes(array: str) -> dict:
    return {item.box: item.caption for item in ITEMS if item.array == array}


PANELS = [
    Panel("cmdDefault", "Main Settings", "fraMain", "Main Settings", "Displaying Main Settings", {
        ("fraIEsettings", "IE Settings"): _boxes("chkIEsettings") | {"cmdCookiesOption": "Option"},
        ("fraWindows", "Windows Settings"): _boxes("chkWinsettings"),
        ("fraNetsacpe", "Netscape Settings"): _boxes("chkNetsettings") | {"picNet": None},
        ("fraOpera", "Opera Settings"): _boxes("chkOsettings") | {"picOpe": None},
        ("fraMain", "Main Settings"): {"cmdSelectAll": "Select All", "cmdDeselectAll": "Deselect All",
                                       "cmdClean_2": "Erase", "Label6": "Boss key", "Label1": "F10"},
    }),
    Panel("cmdCleenFrame", "Erase", "fraClean", " Erase", "Displaying Erase", {
        ("fraClean", " Erase"): {"cmdClean": "Erase Only", "CmdCleanReboot": "Erase && Reboot", "cmdStop": "Stop",
                                 "PbarClean": None, "lstCln": None},
    }),
    Panel("cmdSecureDelk", "Secure Deletion", "fraShred", "Shredder", "Displaying Secure Deletion", {
        ("fraCustomItems", "Manual File/Folder Shredder"): {
            "lblFileShred": "File List", "lstFileShred": None, "cmdFileShred": "Add Files", "cmdClear": "Clear All Files",
            "cmdshredFiles": "Shred Files Now", "lblFolder": "Folder List", "lstFolder": None,
            "cmdAddFolder": "Add Folder", "cmdFolClear": "Clear Folder", "cmdShredFolder": "Shred Folder Now",
            "cmdShredAll": "Shred File/Folder", "lblLev": "Security level", "txtLev": "50", "UpDown1": None,
            "txtMessage": ""},
        ("Frame4", "Status"): {"PbarShred": None, "lStat": "Status"},
        ("Frame11", "Scheduled File Shredder"): {
            "lstFiles": None, "cmdCustomAdd": None, "cmdCustomDeleteAll": "Clear", "chkOptions": "Enable Schedule",
            "lblLevel": "Security level", "txtLevel": "50", "UpDown2": None},
    }),
    Panel("cmdSchedule", "Advance Settings", "fraScheduleManager", "Advance Settings", "Displaying Advance Settings", {
        ("Frame1", "Visible And Invisible"): {
            "cmdRunInv": "Run invisibly now", "lblHideKeys": "Press Ctrl + H to Hide and Ctrl + U to Restore",
            "Label5": "Hide : ---   Ctrl + H", "Label4": "UnHide : ---   Ctrl + U"},
        ("fraScheduleManager", "Advance Settings"): {"cmdUpgrade": "Check for Update"},
        ("fraStatUp", "Start Up"): {("chkStartUp", 0): "Load Quellix On Start Up",
                                    ("chkStartUp", 1): "Ease On Windows Shut Down",
                                    ("chkStartUp", 2): "Erase On Windows Sturt Up"},
        ("fraPanic", "Select Custom Boss Key"): {"Label3": "Boss Key", "cmbBoss": "F10", "cmbBossSet": "Set Boss key",
                                                 "lblRestore": "Restore :-"},
        ("fraSchedule", "Schedule Manager"): {"chkShEnable": "Enable Schedule"},
        ("fraSchedule1", ""): {
            "chkRbt": "Reboot After Erase ( If the box is unchecked then only erasing wiil be done)",
            "CHKieclose": "Shut down all Browser Windows before Erasing",
            ("optSchedule", 0): "Perform Erasing Daily At", ("optSchedule", 1): "Perform Erasing Every Hr",
            ("optSchedule", 2): "Perform Erasing Every", "dtpTime": None, "txtMinutes": "60", "VSUpDown": None,
            "lblmin": " Min"},
    }),
    Panel("cmdHelp", "Help", "fraHelp", "Help", "Displaying Displaying Help", {
        ("Frame3", "Help Pages"): {
            "lblHelp": "Quellix comes with an easy to use interface. In case of any problems, access our online help at",
            "Label16": None},
        ("Frame9", ""): {"lblContact": "If you have any questions or query", "Label22": "Click here to contact us"},
        ("Frame2", "About Us"): {"picAbout": None, "lblAbout": None},
    }),
]
