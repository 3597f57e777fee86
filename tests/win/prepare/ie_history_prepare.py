"""A URL history store with real entries, and a proxy that has every page of the world."""
from tests.win.prepare.erro_handle_prepare import prepare as go_online
from tests.win.prepare.url_history_prepare import prepare as install_store


def prepare(home):
    install_store(home)
    return go_online(home)
