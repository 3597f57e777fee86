"""A proxy that has every page of the world."""
from tests.win.prepare.erro_handle_prepare import prepare

__all__ = ["prepare"]
