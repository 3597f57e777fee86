"""The proxy of the error reporter's tests: the machine can be on line."""
from tests.win.prepare.erro_handle_prepare import prepare  # noqa: F401
