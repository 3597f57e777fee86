"""The proxy of the error reporter's tests: the machine can be on line."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from erro_handle_prepare import prepare  # noqa: E402, F401
