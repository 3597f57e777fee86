"""The registry of a `Desktop`, before the program starts and while it runs."""
from tests.harness.probe import ProbeError

# What the program calls itself once it runs, and with that the name that its settings are kept under.
RUNNING_TITLE = "Program already runnning - This App Will Be Closed"


def registry_file(values: dict[str, dict]) -> bytes:
    """A .reg file. `values` maps key paths (HKCU\\..., HKLM\\...) to names and values: text, number or bytes."""
    long_names = {"HKCU": "HKEY_CURRENT_USER", "HKLM": "HKEY_LOCAL_MACHINE", "HKCR": "HKEY_CLASSES_ROOT",
                  "HKU": "HKEY_USERS"}

    def quoted(text: str) -> str:
        return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'

    def data(value) -> str:
        if isinstance(value, bytes):
            return "hex:" + ",".join(f"{b:02x}" for b in value)
        return f"dword:{value & 0xFFFFFFFF:08x}" if isinstance(value, int) else quoted(value)

    lines = ["Windows Registry Editor Version 5.00", ""]
    for path, names in values.items():
        hive, _, rest = path.partition("\\")
        lines.append(f"[{long_names.get(hive, hive)}\\{rest}]")
        lines += [f"{quoted(name) if name else '@'}={data(value)}" for name, value in names.items()]
        lines.append("")
    return ("\r\n".join(lines) + "\r\n").encode("utf-16")


class Registry:
    def import_registry(self, values: dict[str, dict]) -> None:
        (self.home.c / "preset.reg").write_bytes(registry_file(values))
        self.home.run("regedit", "/S", r"C:\preset.reg", check=True)

    def reg(self, hive: str, path: str, name: str):
        """A registry value as a View with `type` and `text`, `number` or `hex`; None when it is not there."""
        return self.probe.ask("reg", hive, path, name)

    def reg_list(self, hive: str, path: str):
        """The `values` and sub-`keys` of a key; None when it is not there."""
        return self.probe.ask("reglist", hive, path)

    def reg_set(self, hive: str, path: str, name: str, value: str | int) -> None:
        kind = ("dword",) if isinstance(value, int) else ()
        if not self.probe.ask("regset", hive, path, name, str(value), *kind).set:
            raise ProbeError(f"{hive}\\{path} {name} could not be set")

    def reg_delete_key(self, hive: str, path: str) -> bool:
        return self.probe.ask("regdelkey", hive, path).deleted

    def reg_make_volatile(self, hive: str, path: str) -> None:
        """Makes a key that takes no lasting keys below it, so that a program cannot store anything there."""
        if not self.probe.ask("regvolatile", hive, path).made:
            raise ProbeError(f"{hive}\\{path} was already there")

    def _section(self, section: str, app_title: str | None) -> str:
        return rf"Software\Quellix\{app_title or self.app_title}\{section}"

    def registry_value(self, section: str, key: str, app_title: str | None = None) -> str | None:
        """A stored setting of the program; None when it is not stored."""
        value = self.reg("HKCU", self._section(section, app_title), key)
        return None if value is None else value.text

    def registry_section(self, section: str, app_title: str | None = None) -> dict[str, str]:
        found = self.reg_list("HKCU", self._section(section, app_title))
        return {name: value.text for name, value in found["values"].items()} if found else {}
