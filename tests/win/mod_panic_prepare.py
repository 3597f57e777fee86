"""A machine that can be on line: an error is reported then."""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))
from erro_handle_prepare import prepare  # noqa: E402, F401
