#!/usr/bin/env python3
"""Draw every picture Quellix ships: the icon, the banner and the small bitmaps.

Needs Pillow and the DejaVu fonts (Debian packages python3-pil and
fonts-dejavu-core).  From the top of the source tree run

    /usr/bin/python3 art/draw_art.py

which rewrites the files in src/app/res/ and the installer's in packaging/.  The same bytes come out each time.
Another folder to write to can be given as the only argument.
"""
import struct
import sys
import zlib
from pathlib import Path

from PIL import Image, ImageChops, ImageDraw, ImageFont

SS = 16                        # supersampling of the drawn motif
NAVY = (16, 28, 64)            # the banner's background
FACE = (192, 192, 192)         # classic dialog grey, remapped when loaded
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
VGA = [BLACK, (128, 0, 0), (0, 128, 0), (128, 128, 0),
       (0, 0, 128), (128, 0, 128), (0, 128, 128), FACE,
       (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0),
       (0, 0, 255), (255, 0, 255), (0, 255, 255), WHITE]
FONT = "DejaVuSerif-Bold.ttf"

# A look is: the outline, the bowl's two ends (upper left, lower right), the
# light on its rim, and the four hairs of the stroke from top to bottom.
HAIRS_RICH = ((255, 236, 150), (255, 206, 64), (255, 168, 16), (216, 112, 0))
LOOK_RICH = ((8, 14, 44), (32, 136, 176), (14, 30, 96), (152, 236, 240),
             HAIRS_RICH)
LOOK_NAVY = (NAVY, (216, 246, 248), (32, 144, 172), WHITE, HAIRS_RICH)
LOOK_VGA = (BLACK, VGA[4], VGA[4], VGA[14],
            (WHITE, VGA[11], VGA[11], VGA[3]))

# The 16x16 icon is placed pixel by pixel; TINY_RICH and TINY_VGA are its inks.
TINY = """
....kkkkkk......
..kkLLLLmmkk....
.kLLmmmmmmmdk...
.kLmmkkkkmmdk...
kLmmk....kmmdk..
kLmmk....kmmdk..
kLmk......kmdk..
kLmk......kmdk..
kmmk......kmdk..
kmmkkkk...kddk..
kmmkyywkkkkddk..
.kmmkyyywwkkk...
.kmdkkayyyyywkk.
..kkdddkaayyyyyk
....kkkkkkaaaak.
..........kkkk..
""".split()
TINY_RICH = {"k": (8, 14, 44), "L": (136, 226, 234), "m": (26, 88, 156),
             "d": (16, 46, 112), "w": (255, 236, 150), "y": (255, 190, 32),
             "a": (222, 124, 0)}
TINY_VGA = {"k": BLACK, "L": VGA[14], "m": VGA[4], "d": VGA[4],
            "w": WHITE, "y": VGA[11], "a": VGA[3]}


# ---------------------------------------------------------------- the motif

# The tail is one wet brush stroke wiping across the bowl: it swells as it goes
# and its hairs part and run dry one after another.
TAIL = ((0.22, 0.675), (0.48, 0.50), (0.60, 1.02), (0.965, 0.80))
HAIRS = ((-1.0, -0.50, 0.90), (-0.50, -0.02, 1.0),
         (-0.02, 0.48, 0.93), (0.48, 1.0, 0.82))


def tail_at(t):
    """The point at t on the tail's curve, and the unit normal there."""
    (ax, ay), (bx, by), (cx, cy), (dx, dy) = TAIL
    u = 1 - t
    x = u**3 * ax + 3 * u * u * t * bx + 3 * u * t * t * cx + t**3 * dx
    y = u**3 * ay + 3 * u * u * t * by + 3 * u * t * t * cy + t**3 * dy
    gx = u * u * (bx - ax) + 2 * u * t * (cx - bx) + t * t * (dx - cx)
    gy = u * u * (by - ay) + 2 * u * t * (cy - by) + t * t * (dy - cy)
    length = (gx * gx + gy * gy) ** 0.5
    return x, y, -gy / length, gx / length


def hair(side, low, high, end, grow):
    """The mask of one hair's band, between two shares of the stroke's width."""
    left, right = [], []
    for i in range(49):
        t = (end + 2 * grow) * i / 48 - grow
        x, y, nx, ny = tail_at(t)
        width = 0.028 + 0.085 * min(1.0, max(t, 0.0) * 1.5) ** 0.9
        split = max(0.0, t - 0.60) * 0.2 if low > -1 else 0.0
        a, b = (low + split) * width - grow, high * width + grow
        tip = min(1.0, max(0.0, end + grow - t) / 0.10) ** 0.5
        middle, half = (a + b) / 2, (b - a) / 2 * tip
        for edge, at in ((left, middle - half), (right, middle + half)):
            edge.append(((x + nx * at) * side, (y + ny * at) * side))
    mask = Image.new("L", (side, side), 0)
    ImageDraw.Draw(mask).polygon(left + right[::-1], fill=255)
    return mask


def ring(size, inset):
    """The bowl of the Q, set in whole pixels so that its edges stay crisp."""
    mask = Image.new("L", (size * SS, size * SS), 0)
    draw = ImageDraw.Draw(mask)
    span = round(size * 0.91)
    flank, cap = round(size * 0.21), round(size * 0.15)

    def oval(dx, dy, fill):
        draw.ellipse((dx * SS, dy * SS, (span - dx) * SS - 1,
                      (span - dy) * SS - 1), fill=fill)
    oval(inset, inset, 255)
    oval(flank + 1 - inset, cap + 1 - inset, 0)
    return mask


def slope(side, first, second):
    """A diagonal blend from the upper left to the lower right."""
    ramp = Image.linear_gradient("L").resize((side * 2, side * 2)).rotate(45)
    corner = side // 2
    ramp = ramp.crop((corner, corner, corner + side, corner + side))
    return Image.composite(Image.new("RGB", (side, side), second),
                           Image.new("RGB", (side, side), first), ramp)


def motif(size, look):
    """The Q, SS times too large: a picture, and the mask of what it covers."""
    ink, first, second, light, colours = look
    side = size * SS
    picture = Image.new("RGB", (side, side), ink)
    body = ring(size, 1)
    picture.paste(slope(side, first, second), (0, 0), body)
    step = max(SS, side // 26)
    lit = ImageChops.subtract(body, ImageChops.offset(body, step, step))
    picture.paste(light, (0, 0), lit)
    cover = ring(size, 0)
    for band in HAIRS:
        edge = hair(side, *band, max(1 / size, 0.025))
        picture.paste(ink, (0, 0), edge)
        cover = ImageChops.lighter(cover, edge)
    for band, colour in zip(HAIRS, colours):
        picture.paste(colour, (0, 0), hair(side, *band, 0))
    return picture, cover


def smooth(size, look):
    """The motif reduced by averaging, with a soft mask."""
    return [part.resize((size, size), Image.BOX) for part in motif(size, look)]


def flat(size, look):
    """The motif reduced to the commonest colour of each pixel's block."""
    picture, cover = motif(size, look)
    small = Image.new("RGB", (size, size))
    for y in range(size):
        for x in range(size):
            block = picture.crop((x * SS, y * SS, (x + 1) * SS, (y + 1) * SS))
            small.putpixel((x, y), max(block.getcolors(SS * SS))[1])
    return small, cover.resize((size, size), Image.BOX)


def tiny(inks):
    """The hand-placed 16x16 motif and its mask."""
    picture, cover = Image.new("RGB", (16, 16)), Image.new("L", (16, 16), 0)
    for y, row in enumerate(TINY):
        for x, ink in enumerate(row):
            if ink != ".":
                picture.putpixel((x, y), inks[ink])
                cover.putpixel((x, y), 255)
    return picture, cover


# ------------------------------------------------------------- the pictures

class Scaled:
    """Draws in the measures of 96 DPI on a picture of another resolution."""

    def __init__(self, picture, scale):
        self.draw, self.scale = ImageDraw.Draw(picture), scale

    def __getattr__(self, name):
        method = getattr(self.draw, name)

        def scaled(places, *others, **options):
            # A box keeps its last pixel, a line is as thick as the scale.
            if name in ("line", "arc"):
                options.setdefault("width", max(1, round(self.scale)))
            if name == "point" and self.scale > 1:
                x, y = places
                return scaled_box(self.draw.rectangle, (x, y, x, y), **options)
            if name in ("rectangle", "ellipse", "arc"):
                return scaled_box(method, places, *others, **options)
            return method([round((v + 0.5) * self.scale - 0.5) for v in places], *others, **options)

        def scaled_box(method, box, *others, **options):
            left, top, right, bottom = box
            return method([round(left * self.scale), round(top * self.scale), round((right + 1) * self.scale) - 1,
                           round((bottom + 1) * self.scale) - 1], *others, **options)
        return scaled


def banner(scale=1):
    picture = Image.new("RGB", (round(114 * scale), round(72 * scale)), NAVY)
    q, cover = smooth(round(42 * scale), LOOK_NAVY)
    picture.paste(q, (round(38 * scale), round(4 * scale)), cover)
    font = ImageFont.truetype(FONT, round(18 * scale), layout_engine=ImageFont.Layout.BASIC)
    draw = ImageDraw.Draw(picture)
    draw.text((round(57 * scale), round(64 * scale)), "Quellix", fill=(236, 246, 250), font=font, anchor="ms")
    if scale > 1:  # the ground around it is the window's own
        picture = picture.crop((round(13 * scale), round(2 * scale), round(101 * scale), round(70 * scale)))
    return picture


def about(scale=1):
    size = round(64 * scale)
    picture = Image.new("RGB", (size, size), FACE)
    q, cover = smooth(size - 2, LOOK_RICH)
    picture.paste(q, (2, 2), cover)
    return picture


def wizard():
    """The left side of the installer's last page."""
    picture = Image.new("RGB", (164, 314), NAVY)
    q, cover = smooth(104, LOOK_NAVY)
    picture.paste(q, (32, 52), cover)
    font = ImageFont.truetype(FONT, 32, layout_engine=ImageFont.Layout.BASIC)
    ImageDraw.Draw(picture).text((82, 208), "Quellix", fill=(236, 246, 250), font=font, anchor="ms")
    return picture


def net(scale=1):
    """A globe with a small network of nodes over it."""
    picture = Image.new("RGB", (round(32 * scale),) * 2, FACE)
    draw = Scaled(picture, scale)
    draw.ellipse((5, 5, 29, 29), fill=VGA[8])
    draw.ellipse((3, 3, 27, 27), fill=VGA[6], outline=BLACK)
    for box in ((9, 3, 21, 27), (3, 3, 27, 27)):
        draw.ellipse(box, outline=VGA[4])
    for line in ((15, 3, 15, 27), (3, 15, 27, 15), (5, 9, 25, 9),
                 (5, 21, 25, 21)):
        draw.line(line, fill=VGA[4])
    draw.ellipse((3, 3, 27, 27), outline=BLACK)
    draw.arc((5, 5, 25, 25), 190, 260, fill=VGA[14])
    nodes = ((8, 16), (22, 7), (16, 21), (27, 24))
    for a, b in ((0, 1), (0, 2), (1, 2), (2, 3)):
        draw.line(nodes[a] + nodes[b], fill=WHITE)
    for x, y in nodes:
        draw.rectangle((x - 2, y - 2, x + 2, y + 2), fill=VGA[11],
                       outline=BLACK)
        draw.point((x - 1, y - 1), fill=WHITE)
    return picture


def ope(scale=1):
    """A window holding a page of lines, with a magnifier over its corner."""
    picture = Image.new("RGB", (round(32 * scale),) * 2, FACE)
    draw = Scaled(picture, scale)
    draw.rectangle((3, 4, 27, 27), fill=VGA[8])
    draw.rectangle((1, 2, 25, 25), fill=FACE, outline=BLACK)
    draw.line((2, 24, 2, 3, 24, 3), fill=WHITE)
    draw.rectangle((3, 4, 23, 7), fill=VGA[4])
    for x in (18, 21):
        draw.rectangle((x, 5, x + 1, 6), fill=FACE)
    draw.rectangle((3, 9, 23, 23), fill=WHITE)
    draw.line((3, 23, 3, 9, 23, 9), fill=VGA[8])
    for y, end in ((12, 14), (14, 13), (16, 11), (18, 11), (20, 11)):
        draw.line((6, y, end, y), fill=VGA[4] if y == 12 else VGA[8])
    draw.polygon((21, 24, 24, 21, 30, 27, 27, 30), fill=VGA[11], outline=BLACK)
    draw.line((23, 25, 27, 29), fill=VGA[3])
    draw.ellipse((12, 12, 24, 24), fill=VGA[14], outline=BLACK)
    draw.ellipse((13, 13, 23, 23), outline=VGA[8])
    draw.arc((15, 15, 21, 21), 180, 270, fill=WHITE)
    return picture


# ----------------------------------------------------- palettes and files

def palette_for(picture, keys, count=256):
    """The colours for a picture, the given ones first and exact."""
    reduced = picture.quantize(count - len(keys) - (6 if count == 256 else 0), Image.MEDIANCUT, kmeans=2)
    raw = reduced.getpalette()
    found = {tuple(raw[i * 3:i * 3 + 3]) for _, i in reduced.getcolors(256)}
    colours = list(keys) + sorted(found - set(keys))
    return colours + [BLACK] * (count - len(colours))


def index_rows(picture, palette):
    """Rows of nearest palette indices, top row first; no dithering."""
    nearest = {}

    def index(c):
        if c not in nearest:
            nearest[c] = min(range(len(palette)), key=lambda i: sum(
                (p - q) ** 2 for p, q in zip(palette[i], c)))
        return nearest[c]
    pixels = picture.load()
    return [[index(pixels[x, y]) for x in range(picture.width)]
            for y in range(picture.height)]


def pack(rows, bits):
    """Indices as a bottom-up bitmap, each row filled to four bytes."""
    data = bytearray()
    for row in reversed(rows):
        value = 0
        for index in row:
            value = value << bits | index
        width = (len(row) * bits + 31) // 32 * 32
        data += (value << width - len(row) * bits).to_bytes(width // 8, "big")
    return bytes(data)


def dib_head(width, height, bits, size, palette, compression=0):
    # Old drivers lose their way in runs after a palette whose size they are not told.
    head = struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, compression, size,
                       0, 0, len(palette) if compression else 0, 0)
    return head + b"".join(struct.pack("BBBB", b, g, r, 0)
                           for r, g, b in palette)


def shrink(rows, bits):
    """Indices as a bottom-up bitmap of runs: BI_RLE8 or BI_RLE4, which every Windows draws."""
    data = bytearray()
    for row in reversed(rows):
        x = 0
        while x < len(row):
            # A run of one index; with 4 bits also of two in turn.
            step = 2 if bits == 4 else 1
            end = x + step
            while end < len(row) and end - x < 255 and row[end] == row[end - step]:
                end += 1
            end = min(end, len(row))
            pair = row[x] << 4 | row[x + 1] if bits == 4 and x + 1 < len(row) else row[x] << 4 if bits == 4 else row[x]
            data += bytes((end - x, pair))
            x = end
        data += b"\0\0"
    return bytes(data[:-2]) + b"\0\1"


def write_bmp(path, picture, palette):
    """By runs where that is shorter."""
    bits = 4 if len(palette) == 16 else 8
    rows = index_rows(picture, palette)
    plain, runs = pack(rows, bits), shrink(rows, bits)
    data = min(plain, runs, key=len)
    head = dib_head(*picture.size, bits, len(data), palette, {8: 1, 4: 2}[bits] if data is runs else 0)
    start = 14 + len(head)
    path.write_bytes(struct.pack("<2sIHHI", b"BM", start + len(data), 0, 0,
                                 start) + head + data)


def icon_image(picture, cover, deep):
    """One image of an icon: colours, then the mask of what shows through."""
    clear = cover.point(lambda v: 0 if v >= 128 else 1)
    picture = picture.copy()
    picture.paste(BLACK, (0, 0), clear.point(lambda v: v * 255))
    palette = palette_for(picture, [BLACK]) if deep else VGA
    bits = 8 if deep else 4
    size = picture.width
    mask = [[clear.getpixel((x, y)) for x in range(size)] for y in range(size)]
    data = pack(index_rows(picture, palette), bits) + pack(mask, 1)
    return dib_head(size, size * 2, bits, len(data), palette) + data


def alpha_image(picture, cover):
    """One image of an icon with a soft edge, for Windows XP and later, with the mask that older systems would take."""
    size = picture.width
    clear = cover.point(lambda v: 0 if v >= 128 else 1)
    colours, edge = picture.load(), cover.load()
    data = bytes(part for y in reversed(range(size)) for x in range(size)
                 for part in (*(colours[x, y][::-1] if edge[x, y] else BLACK), edge[x, y]))
    data += pack([[clear.getpixel((x, y)) for x in range(size)] for y in range(size)], 1)
    return dib_head(size, size * 2, 32, len(data), []) + data


def png_image(picture, cover):
    picture = picture.convert("RGBA")
    picture.putalpha(cover)
    picture = picture.quantize(96, Image.FASTOCTREE).convert("RGBA")  # half the bytes, and no eye sees it
    width, height = picture.size
    # Without a filter: few colours repeat as they are, and what a filter makes of them takes twice the bytes.
    rows = b"".join(b"\0" + picture.crop((0, y, width, y + 1)).tobytes() for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def icon_images(sizes):
    """What every system shows comes first: images with 16 and with 256 colours."""
    def shaped(size, look, deep):
        if size == 16:
            return tiny(TINY_RICH if deep else TINY_VGA)
        return smooth(size, look) if deep else flat(size, look)
    images = [(size, 4, icon_image(*shaped(size, LOOK_VGA, False), False)) for size in sizes]
    return images + [(size, 8, icon_image(*shaped(size, LOOK_RICH, True), True)) for size in sizes]


def write_icon(path, images):
    table = struct.pack("<HHH", 0, 1, len(images))
    start = len(table) + 16 * len(images)
    for size, bits, data in images:
        table += struct.pack("<BBBBHHII", size % 256, size % 256, 16 if bits == 4 else 0, 0, 1, bits, len(data), start)
        start += len(data)
    path.write_bytes(table + b"".join(data for _, _, data in images))


def main():
    here = Path(__file__).resolve().parent
    out = Path(sys.argv[1]) if len(sys.argv) > 1 else here / "../src/app/res"
    soft = [(16, 32, alpha_image(*tiny(TINY_RICH)))] + [(size, 32, alpha_image(*smooth(size, LOOK_RICH))) for size in (24, 32, 48)]
    write_icon(out / "quellix.ico", icon_images((16, 24, 32, 48)) + soft + [(256, 32, png_image(*smooth(256, LOOK_RICH)))])
    write_icon(out / "quellix_small.ico", icon_images((16, 32)))
    for step, scale in enumerate((1, 1.25, 1.5, 2)):
        end = f"{round(96 * scale)}.bmp" if step else ".bmp"
        # 16 colours of their own do.
        for name, draw, key in (("banner", banner, NAVY), ("about", about, FACE)):
            picture = draw(scale)
            write_bmp(out / (name + end), picture, palette_for(picture, [key], 16))
        write_bmp(out / ("pic_net" + end), net(scale), VGA)
        write_bmp(out / ("pic_ope" + end), ope(scale), VGA)
    picture = wizard()
    write_bmp((out if len(sys.argv) > 1 else here / "../packaging") / "wizard.bmp", picture, palette_for(picture, [NAVY]))


if __name__ == "__main__":
    main()
