"""A share for the spellings that lead to one."""


def prepare(home) -> dict[str, str]:
    (home.prefix / "dosdevices/unc/server/share").mkdir(parents=True)
    return {}
