"""A proxy that has every page of the world, and a link to a file that is to keep what it holds."""
from tests.win.prepare import erro_handle_prepare


def prepare(home) -> dict[str, str]:
    (home.c / "outside").mkdir()
    (home.c / "outside/canary.txt").write_text("not ours")
    (home.c / "outside/link").symlink_to("canary.txt")
    return erro_handle_prepare.prepare(home)


def check(home) -> None:
    if not (home.c / "outside/link").is_symlink() or (home.c / "outside/canary.txt").read_text() != "not ours":
        raise AssertionError("a link, or what it leads to, is not what it was")
