"""A URL history store with real entries."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "doubles"))
from url_history import install_history_store  # noqa: E402


def prepare(home):
    install_history_store(home)
