"""A Windows without wininet.dll, as the first Windows 95 is."""


def prepare(home):
    return {"WINEDLLOVERRIDES": home.environment["WINEDLLOVERRIDES"] + ";wininet="}
