"""A URL history store with real entries, and a proxy that has every page of the world."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from erro_handle_prepare import prepare as go_online  # noqa: E402
from url_history_prepare import prepare as install_store  # noqa: E402


def prepare(home):
    install_store(home)
    return go_online(home)
