"""A second drive, D:, as ScanDisk knows it."""


def prepare(home):
    (home.prefix / "drive_d").mkdir()
    (home.prefix / "dosdevices/d:").symlink_to("../drive_d")
