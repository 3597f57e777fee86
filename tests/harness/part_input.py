"""What a `Desktop` does with mouse and keyboard. Each action returns when Windows has taken the input."""
import contextlib
import os
import subprocess
import time

from tests.harness.probe import View
from tests.harness.x_client import MODIFIERS
from tools.wine_home import wait_for


class Input:
    reachable_within = 120.0  # seconds until what is to be clicked can be

    def move(self, x: int, y: int) -> None:
        self.x.move(x, y)
        wait_for(f"the mouse at {x},{y}", lambda: (lambda i: (i.x, i.y) == (x, y))(self.probe.ask("input")), 10, 0.01)

    def _button(self, button: int, down: bool) -> None:
        # Windows has the event when the button's state tells so; before that, a check could look too early.
        state = "left" if button == 1 else "right"
        self.x.button(button, down)
        wait_for(f"the {state} button {'down' if down else 'up'}", lambda: self.probe.ask("input")[state] == down, 30, 0.01)

    def _aside_of_clicks(self, x: int, y: int) -> tuple[int, int]:
        """The place nearest to x, y where a click is not the second half of a double click, which a test asks for by name.

        Clicks on other programs in between do not matter: each program compares with its own last click.
        """
        now = time.monotonic()
        self._clicks = [c for c in self._clicks if now - c[0] < 1]

        def is_free(place):
            return all(max(abs(place[0] - c[1]), abs(place[1] - c[2])) >= 5 for c in self._clicks)
        steps = ((0, 0), (5, 0), (-5, 0), (0, 5), (0, -5), (5, 5), (-5, -5), (5, -5), (-5, 5))
        place = next((p for p in ((x + dx, y + dy) for dx, dy in steps) if is_free(p)), (x, y))
        self._clicks.append((now, *place))
        return place

    def click_at(self, x: int, y: int, button: int = 1) -> None:
        x, y = self._aside_of_clicks(x, y)
        self.move(x, y)
        self._button(button, True)
        self._button(button, False)

    def right_click_at(self, x: int, y: int) -> None:
        self.click_at(x, y, 3)

    def double_click_at(self, x: int, y: int) -> None:
        x, y = self._aside_of_clicks(x, y)
        self.move(x, y)
        self.x.double_click()
        wait_for("the mouse button up", lambda: not self.probe.ask("input").left, 30, 0.01)

    @contextlib.contextmanager
    def button_held_at(self, x: int, y: int):
        """Holds the left button down from a place on, while the block moves the mouse."""
        self.move(x, y)
        self._button(1, True)
        try:
            yield
        finally:
            self._button(1, False)

    def _reachable(self, name, window, even_if_disabled: bool = False) -> View:
        """The control, as soon as a user can click it: a panel may be on its way."""
        why: list = [None]

        def can_be_clicked():
            why[0], target = self._why_not(self.control(name, window), even_if_disabled)
            return target if not why[0] else None
        try:
            return wait_for("what is clicked", can_be_clicked, self.reachable_within)
        except TimeoutError:
            raise AssertionError(f"a user cannot click {why[0]}") from None

    def _why_not(self, target: View, even_if_disabled: bool) -> tuple[str | None, View]:
        if not target.visible:
            return f"what is not on show: {dict(target)}", target
        if not target.enabled and not even_if_disabled:
            return f"what is disabled: {dict(target)}", target
        x, y = target.centre
        window = self.probe.ask("windowat", x, y)
        if not window or window.hwnd != target.root:
            return f"what {window and (window['class'], window.title)} covers: {target.text!r} at {x},{y}", target
        return None, target

    def click(self, name, window=None, even_if_disabled: bool = False, button: int = 1) -> None:
        """A real click on the middle of a control, which has to be on show, enabled and not covered."""
        self.click_at(*self._reachable(name, window, even_if_disabled).centre, button)

    def right_click(self, name, window=None) -> None:
        self.click(name, window, button=3)

    def double_click(self, name, window=None) -> None:
        self.double_click_at(*self._reachable(name, window).centre)

    def click_item(self, name, item, window=None, double: bool = False) -> None:
        """Clicks a line of a list box, by its text or number; the line has to be scrolled into view."""
        hwnd = self._reachable(name, window).hwnd
        number = item if isinstance(item, int) else self.items(name, window).index(item)
        place = self.probe.ask("itemrect", hwnd, number)
        (left, top, right, bottom), area = place.rect, place.client
        if top < area[1] or bottom > area[3]:
            raise AssertionError(f"line {number} is not in view")
        (self.double_click_at if double else self.click_at)((left + right) // 2, (top + bottom) // 2)

    def set_checked(self, name, checked: bool = True, window=None) -> None:
        """Clicks a box unless it already is as wanted."""
        if self.checked(name, window) != checked:
            self.click(name, window)
            self.wait_checked(name, checked, window)

    def choose(self, name, text: str, window=None) -> None:
        """Chooses a line of a drop-down list with the keyboard, as one does after a click on it."""
        target = self.items(name, window).index(text)
        left, top, right, bottom = self._reachable(name, window).rect
        self.click_at(right - 8, (top + min(bottom, top + 20)) // 2)
        self.wait_control(name, lambda c: c.dropped, "to open", window)
        at = self.control(name, window).selected
        while at != target:
            self.key("Down" if target > at else "Up")
            at = self.wait_control(name, lambda c, old=at: c.selected != old, "to move on", window).selected
        self.key("Return")
        self.wait_control(name, lambda c: not c.dropped, "to close", window)

    # Keys

    def _take_the_keyboard_along(self) -> None:
        """Lets the screen send keys to the window that Windows has in front.

        After a click on the notification icon the screen may leave the keyboard with the taskbar, whatever comes to front, and
        while the window in front is being hidden with nobody. With no window in front the desktop has it.
        """
        def is_there():
            wanted = self.probe.ask("focus").screen or self._desktop_on_screen()
            if self.x.focus() == wanted:
                return True
            self.x.set_focus(wanted)
            return False
        # Where it does not go there, the keys are sent all the same: what they are to do shows whether they arrived.
        with contextlib.suppress(TimeoutError):
            wait_for("the keyboard with the window in front", is_there, 5, 0.005)

    def _keys(self, what: str, send, *arguments) -> None:
        self._take_the_keyboard_along()
        before = self.probe.ask("input")
        if before.now == before.last:  # the clock of the last input counts milliseconds
            wait_for("a new millisecond", lambda: self.probe.ask("input").now != before.last, 1, 0.001)
        send(*arguments)
        wait_for(f"Windows to take {what} {arguments}", lambda: self.probe.ask("input").last != before.last, 30, 0.01)

    def key(self, keys: str) -> None:
        """Presses and releases: "Tab", "ctrl+2", "alt+F4", "shift+F10"."""
        self._keys("the key", self.x.key, keys)

    def keydown(self, keys: str) -> None:
        self._keys("the pressed", self.x.keydown, keys)
        if keys not in MODIFIERS:
            return
        # What is pressed next means something else without it. While a window that has the keyboard is being hidden, Wine may
        # lose a modifier that has just gone down; a user presses again.
        for _ in range(10):
            with contextlib.suppress(TimeoutError):
                wait_for(f"{keys} to be down", lambda: self.probe.ask("input")[keys], 3, 0.01)
                return
            self.x.keyup(keys)
            self.x.keydown(keys)
        raise TimeoutError(f"{keys} does not go down")

    def keyup(self, keys: str) -> None:
        self._keys("the released", self.x.keyup, keys)

    @contextlib.contextmanager
    def held(self, *keys: str):
        """Holds keys down for as long as the block runs.

        The last one goes up first, and the others once a program that looks at the keyboard now and then has seen it.
        """
        down: list[str] = []
        try:
            for one in keys:
                down.append(one)
                self.keydown(one)
            yield
        finally:
            for one in reversed(down):
                if one != down[-1]:
                    begin = self.probe.ask("input").now
                    wait_for("some looks at the keyboard", lambda since=begin: self.probe.ask("input").now - since > 200)
                self.keyup(one)

    def hold_until(self, keys: tuple[str, ...], what: str, condition) -> None:
        """Holds keys down until the condition is true; again where Wine has lost one of them, as a user would press again.

        That happens while the window that has the keyboard is being hidden or shown.
        """
        for _ in range(6):
            with contextlib.suppress(TimeoutError), self.held(*keys):
                wait_for(what, condition, 20)
                return
        raise TimeoutError(f"pressed {keys} six times in vain: {what}")

    def type_text(self, text: str) -> None:
        # xdotool gives letters that the keyboard lacks a key of their own for as long as it takes.
        self._keys("the text", lambda typed: subprocess.run(["xdotool", "type", "--delay", "15", "--", typed], check=True,
                                                            env=dict(os.environ, DISPLAY=self.display.name)), text)

    def replace_text(self, name, text: str, window=None) -> None:
        """Types a new text into an edit box."""
        self.click(name, window)
        self.wait_focus(name, window)
        self.key("ctrl+Home")  # a classic edit box knows no Ctrl+A
        self.key("ctrl+shift+End")
        self.type_text(text)
        self.wait_text(name, text, window)

    def settle(self, name, window=None, seconds: float = 120) -> None:
        """Waits until the window thread of a control on show has worked off its input.

        For tests that nothing happens: a window paints only when no input is left for it.
        """
        hwnd = self.handle(name, window)
        self.probe.ask("invalidate", hwnd)
        wait_for(f"{name} to be idle", lambda: not self.probe.ask("unpainted", hwnd).waits, seconds, 0.01)
