"""What comes up on a `Desktop`: message boxes, file dialogs, the notification icon and popup menus."""
import contextlib

from tests.harness.probe import ProbeError, View
from tools.wine_home import wait_for


class Popups:
    # Message boxes and file dialogs

    def boxes(self) -> list[View]:
        """The message boxes on show: title, text, buttons, icon ("question", ...), default, owner."""
        found = []
        for window in self.find_windows("#32770"):
            try:
                parts = self.controls(window)
            except ProbeError:
                continue
            texts = [c for c in parts if c["class"].lower() == "static" and c.id in (100, 0xFFFF, -1)]
            buttons = [c for c in parts if c["class"].lower() == "button" and 1 <= c.id <= 11 and c.visible]
            if not texts or not buttons or any(c["class"].lower() in ("edit", "combobox", "listbox") for c in parts):
                continue
            icons = [c for c in parts if c["class"].lower() == "static" and c.id in (20, 1088)]
            default = [_plain(b.text) for b in buttons if b.style & 0xF == 1]
            found.append(View(hwnd=window.hwnd, title=window.title, owner=window.owner, pid=window.pid, text=texts[0].text,
                              buttons=[_plain(b.text) for b in buttons], parts=buttons,
                              default=default[0] if default else None,
                              icon=self.probe.ask("stockicon", icons[0].hwnd).icon if icons else None))
        return found

    def wait_box(self, title: str | None = None, seconds: float = 120) -> View:
        """The message box in front, when it has come and can be pressed."""
        def come():
            return next((b for b in self.boxes() if title in (None, b.title) and b.buttons), None)
        return wait_for(f"a message box titled {title!r}", come, seconds)

    def press_button_in_box(self, caption: str, title: str | None = None, seconds: float = 120) -> View:
        """Waits for a message box, clicks one of its buttons, waits until it is gone and returns what it was."""
        box = self.wait_box(title, seconds)
        found = [b for b in box.parts if _plain(b.text) == caption]
        if not found:
            raise AssertionError(f"the box {box.title!r} {box.text!r} has no button {caption!r} but {box.buttons}")
        self.click(found[0])
        wait_for(f"the box {box.title!r} to close", lambda: all(w.hwnd != box.hwnd or not w.visible for w in self.windows()))
        return box

    def file_dialog(self, seconds: float = 120) -> tuple[View, View]:
        """The open-file dialog on show, and the box in it that takes names."""
        def come():
            for window in self.find_windows("#32770"):
                for number in (0x480, 0x47C):
                    for c in self.probe.ask("withid", window.hwnd, number):
                        if c.visible and c["class"].lower() in ("edit", "comboboxex32", "combobox"):
                            return window, c
            return None
        return wait_for("the dialog to choose a file", come, seconds)

    def answer_file_dialog(self, *paths: str, seconds: float = 120) -> None:
        """Enters one or more paths, all of one folder, in the open-file dialog on show and presses Enter."""
        window, box = self.file_dialog(seconds)

        def enter(text: str) -> None:
            self.probe.ask("settext", box.hwnd, text)
            self.wait_keyboard_in(window)
            self.key("Return")
        if len(paths) == 1:
            enter(paths[0])
        else:  # several names are understood in the folder on show only
            folder = paths[0].rpartition("\\")[0]
            enter(folder)
            self.wait_text(0x471, folder.rpartition("\\")[2], window)
            enter(" ".join(f'"{path.rpartition(chr(92))[2]}"' for path in paths))
        wait_for("the file dialog to close", lambda: all(w.hwnd != window.hwnd for w in self.windows()))

    def cancel_file_dialog(self) -> None:
        """Presses Escape; again where the dialog, still busy with showing its folder, has lost the key."""
        window = self.file_dialog()[0]

        def gone():
            return all(w.hwnd != window.hwnd for w in self.windows("#32770"))
        for _ in range(10):
            self.wait_keyboard_in(window)
            self.key("Escape")
            with contextlib.suppress(TimeoutError):
                wait_for("the file dialog to close", gone, 5)
                return
        raise TimeoutError("the file dialog does not close")

    # Notification icon and popup menus

    def taskbar(self) -> View | None:
        return self.find_window("Shell_TrayWnd", visible=None)

    def icon(self) -> View | None:
        """The place of the program's notification icon; None when there is no icon.

        Wine paints icons into the taskbar, square cells from the right edge, with no window of their own to look for. It
        shows the taskbar exactly as long as there is an icon. (Its tooltip windows tell nothing: they outlive the icon.)
        """
        bar = self.taskbar()
        if not bar or not bar.visible:
            return None
        _, top, right, bottom = bar.rect
        return View(rect=[right - (bottom - top), top, right, bottom])

    def wait_icon(self, seconds: float = 120) -> View:
        return wait_for("the notification icon", self.icon, seconds)

    def wait_no_icon(self, seconds: float = 120) -> None:
        wait_for("the notification icon to go", lambda: not self.icon(), seconds)

    def click_icon(self, button: int = 1) -> None:
        self.click_at(*self.wait_icon().centre, button)

    def double_click_icon(self) -> None:
        self.double_click_at(*self.wait_icon().centre)

    def right_click_icon(self) -> None:
        self.click_icon(3)

    def icon_tip(self) -> str:
        """The text that comes up when the mouse rests on the icon."""
        x, y = self.wait_icon().centre
        # A tip comes once each time the mouse enters the icon, and only the taskbar itself notices that it has left.
        self.move(x - 60, y)
        self.settle(self.taskbar())
        self.move(x, y)
        bar = self.taskbar().hwnd

        def tip():
            return next((w for w in self.find_windows("tooltips_class32") if w.owner == bar), None)
        return self.control(wait_for("the tip of the icon", tip)).text

    def restart_taskbar(self, icon_id: int = 1) -> None:
        """What a crash of the taskbar does to the program: its icon is gone and every window is told of a new taskbar."""
        self.probe.ask("dropicon", self.main.hwnd, icon_id)
        self.wait_no_icon()
        self.probe.ask("broadcast", "TaskbarCreated")

    def popup(self, seconds: float = 120) -> list[View]:
        """The entries of the popup menu on show: text, enabled, checked, separator, default, rect."""
        def come():
            window = self.find_window("#32768")
            if not window:
                return None
            try:
                entries = self.probe.ask("menu", window.hwnd)["items"]
            except ProbeError:  # on its way up or down
                return None
            return [View(e, text=_plain(e.text)) for e in entries] or None
        return wait_for("a popup menu", come, seconds)

    def pick(self, caption: str, seconds: float = 120) -> None:
        """Clicks an entry of the popup menu on show and waits until the menu is gone."""
        entries = self.popup(seconds)
        entry = next((e for e in entries if e.text == caption), None)
        if not entry:
            raise AssertionError(f"the menu has no entry {caption!r} but {[e.text for e in entries]}")
        self.click_at(*entry.centre)
        self.wait_no_window("#32768")

    def pick_by_keys(self, caption: str, seconds: float = 120) -> None:
        """Picks an entry of the popup menu on show with arrows and Enter."""
        reachable = [e.text for e in self.popup(seconds) if not e.separator]
        for _ in range(reachable.index(caption) + 1):
            self.key("Down")
        self.key("Return")
        self.wait_no_window("#32768")


def _plain(caption: str) -> str:
    """A caption without the mark of its access key and without the key that follows a tab."""
    return caption.partition("\t")[0].replace("&&", "\0").replace("&", "").replace("\0", "&")
