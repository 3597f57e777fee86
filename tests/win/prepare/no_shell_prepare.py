"""A Windows without the shell's libraries: what lacks them on an old system lacks more here."""


def prepare(home):
    return {"WINEDLLOVERRIDES": home.environment["WINEDLLOVERRIDES"] + ";shlwapi=;shell32="}
