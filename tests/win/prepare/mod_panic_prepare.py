"""A machine that can be on line: an error is reported then."""
from tests.win.prepare.erro_handle_prepare import prepare  # noqa: F401
