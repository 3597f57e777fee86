"""A link to a file that is to keep what it holds. The program moves the link to where it is looked for."""


def prepare(home) -> dict[str, str]:
    (home.c / "outside of all").mkdir()
    (home.c / "outside of all/canary.txt").write_text("not ours")
    (home.c / "links").mkdir()
    (home.c / "links/canary").symlink_to(home.c / "outside of all/canary.txt")
    return {}


def check(home) -> None:
    link, canary = home.c / "links/canary", home.c / "outside of all/canary.txt"
    if not link.is_symlink() or canary.read_text() != "not ours":
        raise AssertionError(f"{link} or what it leads to is not what it was")
