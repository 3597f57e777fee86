"""C++ sources as text for the checks: code without comments and strings, comments and strings without code, declarations."""
import re
from typing import Iterator, NamedTuple

# Raw strings first: what looks like a comment or a quotation mark in one is none.
PIECE = re.compile(
    r'(?P<raw>R"(?P<tag>[^()\\\s]{0,16})\(.*?\)(?P=tag)")'
    r"|(?P<comment>//(?:[^\n\\]|\\.)*(?:\\\n[^\n]*)*|/\*.*?\*/)"
    r'|(?P<string>"(?:[^"\\\n]|\\.)*")'
    r"|(?P<character>(?<![0-9A-Fa-f])'(?:[^'\\\n]|\\.)+')",
    re.DOTALL)
DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n\\]|\\.|\\\n)*", re.MULTILINE)
SCOPE = re.compile(r"(?:inline\s+)?namespace(?:\s+(?P<name>[\w:]+))?\s*")


def _blank(text: str) -> str:
    return re.sub(r"[^\n]", " ", text)


def code_of(text: str) -> str:
    """The text with comments and the insides of literals blanked; places and lines stay as they are."""
    def blanked(piece: re.Match) -> str:
        whole = piece[0]
        return _blank(whole) if piece["comment"] else whole[0] + _blank(whole[1:-1]) + whole[-1]
    return PIECE.sub(blanked, text)


def words_of(text: str) -> str:
    """The opposite: comments and the insides of literals only."""
    words, at = [], 0
    for piece in PIECE.finditer(text):
        words += [_blank(text[at:piece.start()]), piece[0]]
        at = piece.end()
    return "".join(words) + _blank(text[at:])


def without_directives(code: str) -> str:
    return DIRECTIVE.sub(lambda line: _blank(line[0]), code)


class Declaration(NamedTuple):
    line: int
    scope: tuple[str, ...]  # the namespaces around it, outermost first; "" for one without a name, '"C"' for a linkage block
    text: str
    opens: bool  # ends at a brace: a definition, or something with an initialiser


def declarations(text: str) -> Iterator[Declaration]:
    """What a file declares at namespace scope: each up to its semicolon or its opening brace."""
    code = without_directives(code_of(text))
    open_braces: list[tuple[str, ...]] = []  # the names that each one added to the scope
    scope: tuple[str, ...] = ()
    body = 0  # braces of function bodies, classes and initialisers
    start = 0
    for mark in re.finditer(r"[{};]", code):
        header = " ".join(code[start:mark.start()].split())
        line = code.count("\n", 0, start + len(code[start:mark.start()]) - len(code[start:mark.start()].lstrip())) + 1
        if body:
            body += {"{": 1, "}": -1, ";": 0}[mark[0]]
        elif mark[0] == "{":
            names = _names_of_block(header)
            if names is None:
                yield Declaration(line, scope, header, True)
                body = 1
            else:
                open_braces.append(scope)
                scope += names
        elif mark[0] == "}":
            scope = open_braces.pop() if open_braces else ()
        elif header:
            yield Declaration(line, scope, header, False)
        if not body:
            start = mark.end()


def _names_of_block(header: str) -> tuple[str, ...] | None:
    """The namespaces that a block opens; None when it opens none."""
    if re.fullmatch(r'extern " *"', header):
        return ('"C"',)
    opened = SCOPE.fullmatch(header)
    return tuple((opened["name"] or "").split("::")) if opened else None
