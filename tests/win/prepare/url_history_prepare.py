"""A URL history store with real entries."""
from tests.doubles.url_history import install_history_store


def prepare(home):
    install_history_store(home)
