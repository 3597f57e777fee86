"""Which header a name of the standard library or of Windows comes from, for the check that each file includes what it names.

The compiler does not tell: it reads the commonest headers once, before every file.
"""
import re
from typing import Iterator

from tools.cpp_text import code_of, without_directives

CONTAINERS = {"string", "string_view", "vector", "array", "span", "map", "deque"}
# Names to the headers that each may come from.
HEADERS: dict[str, set[str]] = {name: headers for names, headers in (
    ("any_of copy_backward copy_n find find_if max min remove_if replace reverse sort transform", {"algorithm"}),
    ("array", {"array"}),
    ("bit_cast bit_width", {"bit"}),
    ("floor isfinite", {"cmath"}),
    ("size_t", {"cstddef", "cstdlib", "cstring"}),
    ("ptrdiff_t", {"cstddef"}),
    ("int16_t int32_t int64_t uint8_t uint16_t uint32_t uint64_t uintptr_t", {"cstdint"}),
    ("exit free malloc rand srand", {"cstdlib"}),
    ("memcpy memmove memset strcmp strlen", {"cstring"}),
    ("deque", {"deque"}),
    ("function", {"functional"}),
    ("begin end size", {"iterator", *CONTAINERS}),
    ("numeric_limits", {"limits"}),
    ("map multimap", {"map"}),
    ("addressof make_unique unique_ptr", {"memory"}),
    ("bad_alloc", {"new"}),
    ("nullopt optional", {"optional"}),
    ("span", {"span"}),
    ("basic_string string to_string wstring", {"string"}),
    ("erase erase_if", CONTAINERS),
    ("basic_string_view string_view string_view_literals wstring_view", {"string_view"}),
    ("enable_if_t is_same_v remove_cvref_t remove_reference_t", {"type_traits"}),
    ("exchange move swap", {"utility"}),
    ("vector", {"vector"}),
) for name in names.split()}
STANDARD = re.compile(r"\bstd::(?:ranges::)?(\w+)")
OF_WINDOWS = {"platform/win32.h", "windows.h"}
# A call of the system's, or one of the types and macros that hardly any file of Windows does without.
WINDOWS = re.compile(r"(?<![\w>:])::\s*\w+"
                     r"|\b(?:BOOL|CALLBACK|DWORD|FALSE|HANDLE|HINSTANCE|HKEY|HRESULT|HWND|LONG|LPARAM|LPCSTR|LPCWSTR|LPSTR|LPWSTR|"
                     r"LRESULT|MAX_PATH|MSG|POINT|RECT|TRUE|UINT|ULONG|WINAPI|WPARAM)\b")


def missing(text: str, included: set[str]) -> Iterator[tuple[int, str]]:
    """Places in the text, and what is missing there, for a file that includes these headers, by itself or by others of ours."""
    code, told = without_directives(code_of(text)), set()
    for name in STANDARD.finditer(code):
        headers = HEADERS.get(name[1])
        if headers is None:
            yield name.start(), f"of which header std::{name[1]} is, tools/standard_headers.py does not say"
        elif not headers & included and name[1] not in told:
            told.add(name[1])
            yield name.start(), f"std::{name[1]} needs <{min(headers)}>"
    windows = WINDOWS.search(code)
    if windows and not OF_WINDOWS & included:
        yield windows.start(), f"{windows[0]} needs platform/win32.h"
