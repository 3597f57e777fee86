"""The names of controls, read from the headers that the program itself is built with."""
import ast
import re
from pathlib import Path

from tools.wine_home import ROOT


def control_ids(*headers: Path) -> dict:
    """Names of controls to their ids, from lines like `#define IDC_cmdClean 1101`.

    A name that ends in `_<number>` is also known as an element of a control array: ("chkIEsettings", 0).
    Without arguments it reads every src/**/*_ids.h.
    """
    found: dict = {}
    values: dict[str, int] = {}
    line_shape = re.compile(r"^\s*#\s*define\s+(\w+)[ \t]+([^/\n]+)", re.M)
    for header in headers or sorted((ROOT / "src").rglob("*_ids.h")):
        for name, text in line_shape.findall(header.read_text(encoding="utf-8")):
            expression = re.sub(r"[A-Za-z_]\w*", lambda m: str(values.get(m[0], m[0])), text.strip())
            try:
                values[name] = int(eval_integer(expression))
            except (ValueError, SyntaxError):
                continue
            if name.startswith("IDC_"):
                plain = name[len("IDC_"):]
                found[plain] = values[name]
                array = re.fullmatch(r"(\w+)_(\d+)", plain)
                if array:
                    found[array[1], int(array[2])] = values[name]
    return found


def eval_integer(text: str) -> int:
    """The value of a constant sum such as `(1100 + 3)`."""
    def value(node) -> int:
        if isinstance(node, ast.Constant) and isinstance(node.value, int):
            return node.value
        if isinstance(node, ast.BinOp) and isinstance(node.op, (ast.Add, ast.Sub)):
            left, right = value(node.left), value(node.right)
            return left + right if isinstance(node.op, ast.Add) else left - right
        if isinstance(node, ast.UnaryOp) and isinstance(node.op, ast.USub):
            return -value(node.operand)
        raise ValueError(text)
    return value(ast.parse(text.strip(), mode="eval").body)
