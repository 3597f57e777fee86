"""What a `Desktop` sees: windows, controls by name, the focus; and waiting for it to become something."""
import re

from tests.harness.probe import ProbeError, View
from tools.wine_home import wait_for


class Windows:
    def windows(self, class_name: str | None = None) -> list[View]:
        """The windows of the screen from the top down, or those of a class."""
        return self.probe.ask("windows", *[class_name] * (class_name is not None))

    def find_windows(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                     pid: int | None = None) -> list[View]:
        return [w for w in self.windows(class_name)
                if (title is None or w.title == title) and (visible is None or w.visible == visible)
                and (pid is None or w.pid == pid)]

    def find_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                    pid: int | None = None) -> View | None:
        return next(iter(self.find_windows(class_name, title, visible, pid)), None)

    def wait_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                    seconds: float = 120) -> View:
        return wait_for(f"a window, class {class_name}, title {title}, visible {visible}",
                        lambda: self.find_window(class_name, title, visible), seconds)

    def wait_no_window(self, class_name: str | None = None, title: str | None = None, visible: bool | None = True,
                       seconds: float = 120) -> None:
        wait_for(f"the window to go, class {class_name}, title {title}, visible {visible}",
                 lambda: not self.find_window(class_name, title, visible), seconds)

    @property
    def main(self) -> View:
        """The main window, shown or not."""
        found = self.find_window(self.main_class, visible=None)
        if not found:
            raise LookupError(f"there is no window of class {self.main_class}; there are "
                              + ", ".join(f"{w['class']} '{w.title}'" for w in self.windows()))
        return found

    def _window_handle(self, window) -> int:
        if window is None:
            return self.probe.ask("top", self.main_class).hwnd or self.main.hwnd
        return window if isinstance(window, int) else window.hwnd

    def _about_control(self, question: str, name, window) -> View:
        number = name if isinstance(name, int) else self.ids.get(name)
        if number is None:
            raise LookupError(f"no header names a control {name}")
        told = self.probe.ask(question, self.main_class if window is None else self._window_handle(window), number)
        if "found" in told:
            if not told.root and window is None:
                self._window_handle(None)  # says what is there instead
            raise LookupError(f"{told.found} controls have the id {number} of {name}, {told.shown} of them on show")
        return told

    def handle(self, name, window=None) -> int:
        """The window handle of a control: by name, by (name, index) of an array, by id, or already a View.

        Where several controls of the window have the id, it is the one on show.
        """
        return name.hwnd if isinstance(name, View) else self._about_control("handleof", name, window).hwnd

    def control(self, name, window=None) -> View:
        return self.probe.ask("control", name.hwnd) if isinstance(name, View) else self._about_control("controlof", name, window)

    def controls(self, window=None, class_name: str | None = None) -> list[View]:
        return self.probe.ask("controls", self._window_handle(window), *[class_name] * (class_name is not None))

    def has_control(self, name, window=None) -> bool:
        try:
            self.handle(name, window)
        except LookupError:
            return False
        return True

    def text(self, name, window=None) -> str:
        return self.control(name, window).text

    def checked(self, name, window=None) -> bool:
        return self.control(name, window).checked

    def text_size(self, name, width: int = 0, window=None) -> View:
        """The `width` and `height` that a control's text takes in its font, broken at a width or on one line, and its
        `client` rectangle."""
        return self.probe.ask("textsize", self.handle(name, window), width)

    def items(self, name, window=None) -> list[str]:
        """Every line of a list box or combo box."""
        hwnd = self.handle(name, window)

        def told():
            answer = self.probe.ask("items", hwnd)
            return answer if answer.answered else None
        return wait_for(f"{name} to tell its lines", told)["items"]

    def wait_control(self, name, condition, what: str = "", window=None, seconds: float = 120) -> View:
        """Waits until `condition(view)` holds and returns the view."""
        last: list = [None]

        def holds():
            try:
                last[0] = self.control(name, window)
            except (LookupError, ProbeError):
                return None
            return last[0] if condition(last[0]) else None
        try:
            return wait_for(f"{name} {what}", holds, seconds)
        except TimeoutError as e:
            raise TimeoutError(f"{e}; it is {last[0] and dict(last[0])}") from None

    def wait_text(self, name, text, window=None, seconds: float = 120) -> str:
        """Waits until a control shows a text, or one that matches a compiled expression."""
        fits = text.search if isinstance(text, re.Pattern) else text.__eq__
        return self.wait_control(name, lambda c: fits(c.text), f"to show {text!r}", window, seconds).text

    def wait_checked(self, name, checked: bool = True, window=None, seconds: float = 120) -> None:
        what = f"to be {'checked' if checked else 'unchecked'}"
        self.wait_control(name, lambda c: c.checked == checked, what, window, seconds)

    def wait_enabled(self, name, enabled: bool = True, window=None, seconds: float = 120) -> None:
        self.wait_control(name, lambda c: c.enabled == enabled, f"to be enabled: {enabled}", window, seconds)

    def wait_visible(self, name, visible: bool = True, window=None, seconds: float = 120) -> None:
        self.wait_control(name, lambda c: c.visible == visible, f"to be visible: {visible}", window, seconds)

    def hide_window(self, window=None) -> None:
        """What a program that manages other programs' windows can do; no user can."""
        self.probe.ask("show", self._window_handle(window), 0)

    def status_text(self, part: int = 1, window=None) -> str:
        """The text of a part of the window's status bar; none while the bar has no such part yet."""
        bar = self.control("stBar", window)
        return bar.simple_text if bar.simple else "".join(bar.parts[part:part + 1])

    def wait_status(self, text: str, part: int = 1, seconds: float = 120) -> None:
        wait_for(f"the status bar to say {text!r}", lambda: self.status_text(part) == text, seconds)

    def focus(self) -> View:
        """The control that has the keyboard, in the window in front."""
        return self.probe.ask("focus")

    def wait_focus(self, name, window=None, seconds: float = 120) -> None:
        wait_for(f"the keyboard to be on {name}", lambda: self.focus().hwnd == self.handle(name, window), seconds)

    def wait_keyboard_in(self, window, seconds: float = 120) -> None:
        """A dialog takes the keyboard some time after it has come; what is pressed before that goes nowhere."""
        def inside():
            focused = self.focus().hwnd
            return focused and self.probe.ask("control", focused).root == window.hwnd
        wait_for(f"the keyboard to be in {window.title!r}", inside, seconds)

    def foreground(self) -> View | None:
        return self.probe.ask("foreground")
