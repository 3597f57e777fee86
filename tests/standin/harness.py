"""The one place where the tests of the stand-in take something from the driver of the shipped program."""
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT / folder) for folder in ("tools/audit", "tools/traces", "tools", "tests/doubles", "tests/ui")]
import browsers  # noqa: E402
import other_browsers  # noqa: E402
import run_job  # noqa: E402
import url_cache  # noqa: E402
from driver import BUILD, BUILT, Desktop, compile_windows_program, wait_for  # noqa: E402
from floor import Floor  # noqa: E402
from pe_file import PeFile  # noqa: E402
from program import DONE, ITEMS, OFF_LINE, STARTED, STORE, only  # noqa: E402
from shredder import ShredderCase, overwritten_size  # noqa: E402
from url_history import history_urls  # noqa: E402
from wine_home import WineHome  # noqa: E402

__all__ = ["BUILD", "BUILT", "DONE", "Desktop", "Floor", "ITEMS", "OFF_LINE", "PeFile", "ROOT", "STARTED", "STORE",
           "ShredderCase", "WineHome", "browsers", "compile_windows_program", "history_urls", "only", "other_browsers",
           "overwritten_size", "run_job", "url_cache", "wait_for"]
