"""A URL history store with real entries, in a time zone for each Windows version: none, west, east by a broken hour."""
from tests.doubles.url_history import install_history_store

ZONES = {  # the zone as Unix writes it, and its minutes east of universal time
    "win98": ("UTC0", 0),
    "nt40": ("XST8", -480),
    "winxp": ("XST-5:30", 330),
}


def prepare(home):
    install_history_store(home)
    zone, minutes = ZONES[home.base.name.rpartition("-")[2]]
    return {"TZ": zone, "QUELLIX_TEST_ZONE_MINUTES": str(minutes)}
