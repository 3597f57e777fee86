"""Makes the manual: HTML of the text files in docs/manual, with their pictures, for every browser from Internet Explorer 4 on.

The texts are Markdown with tables. What Internet Explorer 4 does not know of style sheets it leaves out without harm: the layout
needs none of it. Run by the system's own Python, which has the library.
"""
import html
import re
import shutil
import sys
from pathlib import Path

import markdown

ROOT = Path(__file__).resolve().parent.parent
SOURCES = ROOT / "docs/manual"
PAGE = """<!DOCTYPE HTML PUBLIC "-//W3C//DTD HTML 4.01 Transitional//EN" "http://www.w3.org/TR/html4/loose.dtd">
<html lang="en">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=iso-8859-1">
<meta name="viewport" content="width=device-width">
<title>{title}</title>
<link rel="stylesheet" type="text/css" href="style.css">
</head>
<body bgcolor="#ffffff" text="#000000" link="#0000a0" vlink="#602080">
<p class="bar">{bar}</p>
<hr>
{body}
<hr>
<p class="bar">{ways}</p>
</body>
</html>
"""


def contents() -> list[tuple[str, str]]:
    """The pages in their order: the file's name without its ending, and its short title."""
    lines = (SOURCES / "contents.txt").read_text(encoding="ascii").splitlines()
    return [tuple(line.split(None, 1)) for line in lines if line and not line.startswith("#")]


def gif_size(path: Path) -> tuple[int, int]:
    head = path.read_bytes()[:10]
    if head[:3] != b"GIF":
        raise SystemExit(f"quellix: {path} is no GIF picture.")
    return int.from_bytes(head[6:8], "little"), int.from_bytes(head[8:10], "little")


def picture(match: re.Match) -> str:
    words, name = match[1], match[2]
    width, height = gif_size(SOURCES / name)
    return f'<img src="{name}" width="{width}" height="{height}" border="0" alt="{words}">'


def body_of(text: str) -> str:
    body = markdown.markdown(text, extensions=["tables", "toc"], output_format="html")
    body = re.sub(r'<img alt="([^"]*)" src="([^"]*)">', picture, body)
    body = body.replace("<table>", '<table border="1" cellpadding="4" cellspacing="0">')
    body = body.replace("<th>", '<th align="left">').replace("<td>", '<td valign="top">').replace('<td valign="top"></td>', "<td>&nbsp;</td>")
    body = re.sub(r'href="(\w+)\.txt(#\w+)?"', r'href="\1.html\2"', body)
    return body.encode("ascii", "xmlcharrefreplace").decode("ascii")


def link(page: tuple[str, str], words: str, here: str) -> str:
    return f"<b>{words}</b>" if page[0] == here else f'<a href="{page[0]}.html">{words}</a>'


def page_of(number: int, pages: list[tuple[str, str]]) -> str:
    name = pages[number][0]
    text = (SOURCES / f"{name}.txt").read_text(encoding="ascii")
    heading = re.match(r"# (.+)\n", text)[1]
    bar = " |\n".join(link(page, html.escape(page[1]).replace(" ", "&nbsp;"), name) for page in pages)
    ways = [link(pages[at], f"{words}: {html.escape(pages[at][1])}", name)
            for at, words in ((number - 1, "Back"), (number + 1, "Next")) if 0 <= at < len(pages)]
    title = heading if heading.startswith("Quellix 1") else f"{heading} - Quellix"
    return PAGE.format(title=html.escape(title), bar=bar, body=body_of(text), ways=" |\n".join(ways))


def make(target: Path) -> None:
    shutil.rmtree(target, ignore_errors=True)
    (target / "pictures").mkdir(parents=True)
    pages = contents()
    for number, (name, _) in enumerate(pages):
        (target / f"{name}.html").write_text(page_of(number, pages), encoding="ascii")
    shutil.copyfile(SOURCES / "style.css", target / "style.css")
    for source in sorted((SOURCES / "pictures").glob("*.gif")):
        shutil.copyfile(source, target / "pictures" / source.name)


if __name__ == "__main__":
    make(Path(sys.argv[1]))
