"""A proxy that has every page of the world: the machine can be on line, and its errors are reported then."""
from tests.harness.proxy import start_proxy


def prepare(home) -> dict[str, str]:
    return {"QUELLIX_TEST_PROXY": start_proxy(home.c / "test/requests.txt")}
