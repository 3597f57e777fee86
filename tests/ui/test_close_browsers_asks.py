"""How often a browser is asked to close before a run, and a browser that this program may not ask."""
import itertools
import unittest

from tests.harness import browsers
from tests.harness.driver import wait_for
from tests.harness.program import DONE, only
from tests.harness.rigged import RiggedCase

CLIPBOARD = "Erasing Clipboard History..."
WM_MOUSEMOVE = 0x0200


class AskingCase(RiggedCase):
    options = {"prepare": browsers.install}

    def start_and_open(self, refusal: int, *words: str) -> None:
        self.rig(*words)
        self.start(only("OpenSavedDialoge") | {"Scheduling": {"CHKieclose": "True"}})
        other = browsers.open_windows(self.d, (browsers.FRAME, "One"), (browsers.FRAME, "Two"), refusal=refusal)
        self.addCleanup(lambda: self.d.ended(other) is None and self.d.terminate(other))
        self.d.second_instance()
        self.wait_in_front()
        self.show_erase_panel()
        self.d.click("cmdClean")


class ABrowserThatRefusesToClose(AskingCase):
    def test_is_asked_ten_times_a_second_and_not_at_each_event(self):
        d = self.d
        self.start_and_open(-1)
        self.wait_call("PostMessageA")

        def asked_while_events_come():
            for _ in range(20):
                d.post(None, WM_MOUSEMOVE, 0, 0x00400040)
            return len(self.calls("PostMessageA")) > 5
        wait_for("some requests", asked_while_events_come, every=0.005)
        times = [int(call.split()[1]) for call in self.calls("PostMessageA")]
        waits = [later - earlier for earlier, later in itertools.pairwise(times)]
        self.assertGreaterEqual(min(waits), 90, waits)


class ABrowserThatCannotBeAsked(AskingCase):
    def test_is_not_waited_for(self):
        self.start_and_open(-1, "no-close")
        self.assertEqual(self.wait_run_over(), [CLIPBOARD, *DONE])
        self.assertEqual(len(self.calls("PostMessageA")), 2)


if __name__ == "__main__":
    unittest.main(verbosity=2)
