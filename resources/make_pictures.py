#!/usr/bin/env python3
"""Draws the program's icon and splash picture: an arrow that circles a document.

Writes swiftpatch.ico and splash.jpg beside itself. Both are kept in the tree; this is run only when
the drawing changes. Needs nothing but Python.
"""
import math
import pathlib
import struct
import zlib

SAMPLES = 4  # Each pixel is the mean of SAMPLES x SAMPLES points.

PAGE = (255, 255, 255)
LINE = (120, 136, 160)
FOLD = (196, 206, 222)
EDGE = (70, 84, 110)
RIM = (255, 255, 255)
# Shaft and tip of the arrow: dark on its rim in icons, bright before the splash's background.
ICON_ARROW = [(16, 92, 176), (10, 70, 140)]
SPLASH_ARROW = [(36, 132, 214), (24, 104, 182)]

# The drawing lies in the unit square, y downwards.
LEFT, TOP, RIGHT, BOTTOM, CORNER = 0.355, 0.275, 0.645, 0.725, 0.10
RING, HALF_WIDTH, TIP_LENGTH, TIP_HALF = 0.36, 0.052, 0.2, 0.125
ARC_START, ARC_END = -30.0, 270.0  # Degrees, clockwise from the right.
RIM_WIDTH = 0.04
AROUND = [(RIM_WIDTH * math.cos(i * math.pi / 6), RIM_WIDTH * math.sin(i * math.pi / 6))
          for i in range(12)]


def on_arrow(x, y):
    """0 on the shaft, 1 on the tip, else None."""
    dx, dy = x - 0.5, y - 0.5
    angle = (math.degrees(math.atan2(dy, dx)) - ARC_START) % 360.0
    if abs(math.hypot(dx, dy) - RING) <= HALF_WIDTH and angle <= ARC_END - ARC_START:
        return 0
    end = math.radians(ARC_END)
    along = (-math.sin(end), math.cos(end))
    outward = (math.cos(end), math.sin(end))
    px, py = dx - RING * outward[0], dy - RING * outward[1]
    ahead = px * along[0] + py * along[1]
    aside = px * outward[0] + py * outward[1]
    if 0.0 <= ahead <= TIP_LENGTH and abs(aside) <= TIP_HALF * (1.0 - ahead / TIP_LENGTH):
        return 1
    return None


def on_page(x, y):
    if not (LEFT <= x <= RIGHT and TOP <= y <= BOTTOM):
        return None
    from_corner = (RIGHT - x) + (y - TOP)
    if from_corner < CORNER:
        return None
    if x > RIGHT - CORNER and y < TOP + CORNER:
        return FOLD
    border = 0.018
    if x < LEFT + border or x > RIGHT - border or y < TOP + border or y > BOTTOM - border:
        return EDGE
    row = (y - TOP - 0.145) / 0.08
    if 0.0 <= row < 3.6 and row % 1.0 < 0.42 and LEFT + 0.055 <= x <= RIGHT - 0.055:
        return LINE
    return PAGE


def on_rim(x, y):
    """Behind an icon: a rim that keeps the arrow apart from a title bar of whatever colour."""
    return RIM if any(on_arrow(x + dx, y + dy) is not None for dx, dy in AROUND) else None


def glow(x, y):
    """Behind the splash picture."""
    if min(x, y, 1.0 - x, 1.0 - y) < 0.012:
        return (150, 176, 214)
    light = max(0.0, 1.0 - math.hypot(x - 0.5, y - 0.45) / 0.75)
    return tuple(int(low + (high - low) * light)
                 for low, high in zip((10, 22, 52), (62, 96, 160)))


def pixel(column, row, size, arrow, background):
    total = [0.0, 0.0, 0.0, 0.0]
    for i in range(SAMPLES * SAMPLES):
        x = (column + (i % SAMPLES + 0.5) / SAMPLES) / size
        y = (row + (i // SAMPLES + 0.5) / SAMPLES) / size
        part = on_arrow(x, y)
        color = on_page(x, y) or background(x, y) if part is None else arrow[part]
        if color:
            total = [a + b for a, b in zip(total, (*color, 1.0))]
    if total[3] == 0:
        return (0, 0, 0, 0)
    return (*(round(part / total[3]) for part in total[:3]),
            round(255 * total[3] / (SAMPLES * SAMPLES)))


def draw(size, arrow=ICON_ARROW, background=on_rim):
    return [[pixel(column, row, size, arrow, background) for column in range(size)]
            for row in range(size)]


# --- The icon: 16 colours for old systems, full colours with transparency for the others. The small
# sizes are what title bars and the desktop ask for at 100 to 250 percent. The large ones, which only
# systems that read PNG ask for, are compressed.

FULL_COLOR_SIZES = [16, 20, 24, 32, 40, 48]
COMPRESSED_SIZES = [64, 96, 128, 256]
FEW_COLOR_SIZES = [16, 32]

VGA = [(0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0), (0, 0, 128), (128, 0, 128),
       (0, 128, 128), (192, 192, 192), (128, 128, 128), (255, 0, 0), (0, 255, 0), (255, 255, 0),
       (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255)]


def nearest(color):
    return min(range(16), key=lambda i: sum((a - b) ** 2 for a, b in zip(VGA[i], color)))


def packed(bits, per_item):
    """Rows of small numbers, packed into bytes and padded to four of them."""
    text = "".join(format(bit, f"0{per_item}b") for bit in bits)
    text += "0" * (-len(text) % 32)
    return bytes(int(text[i:i + 8], 2) for i in range(0, len(text), 8))


def icon_image(size, depth):
    rows = draw(size)[::-1]
    header = struct.pack("<IiiHHIIiiII", 40, size, 2 * size, 1, depth, 0, 0, 0, 0, 0, 0)
    if depth == 32:
        colors = b"".join(struct.pack("4B", b, g, r, a) for row in rows for r, g, b, a in row)
    else:
        colors = b"".join(struct.pack("4B", b, g, r, 0) for r, g, b in VGA)
        colors += b"".join(packed([nearest(p[:3]) if p[3] >= 128 else 0 for p in row], 4)
                           for row in rows)
    mask = b"".join(packed([int(p[3] < 128) for p in row], 1) for row in rows)
    return header + colors + mask


def chunk(kind, data):
    body = kind + data
    return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))


def predicted_up(rows):
    """PNG's filter 2: each byte less the one above it, which suits an even drawing."""
    above = bytes(4 * len(rows))
    for row in rows:
        line = bytes(part for pixel in row for part in pixel)
        yield b"\2" + bytes((a - b) & 255 for a, b in zip(line, above))
        above = line


def png(size):
    header = struct.pack(">2I5B", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(b"".join(predicted_up(draw(size))), 9)) +
            chunk(b"IEND", b""))


def icon():
    images = [(size, 32, png(size)) for size in COMPRESSED_SIZES[::-1]]
    images += [(size, 32, icon_image(size, 32)) for size in FULL_COLOR_SIZES[::-1]]
    images += [(size, 4, icon_image(size, 4)) for size in FEW_COLOR_SIZES[::-1]]
    entries, offset = b"", 6 + 16 * len(images)
    for size, depth, image in images:
        entries += struct.pack("<4B2H2I", size % 256, size % 256, 16 if depth == 4 else 0, 0, 1,
                               depth, len(image), offset)
        offset += len(image)
    return (struct.pack("<3H", 0, 1, len(images)) + entries +
            b"".join(image for _, _, image in images))


# --- The splash picture: baseline JPEG, ITU-T T.81. ---

def zigzag():
    return sorted(range(64), key=lambda i: (
        i // 8 + i % 8, i // 8 if (i // 8 + i % 8) % 2 else i % 8))


ZIGZAG = zigzag()
# Coarser steps for finer detail; simpler than the usual table and good enough for a drawing.
STEPS = [3 + 2 * (i // 8 + i % 8) for i in range(64)]
# Huffman codes that suit a smooth picture: (length, symbols).
DC_CODES = [(3, [0, 1, 2, 3, 4]), (4, [5, 6, 7]), (5, [8, 9, 10, 11])]
SHORT = [(2, [0x00]), (3, [0x01]), (4, [0x02, 0x11])]
REST = [run << 4 | size for run in range(16) for size in range(1, 11)] + [0xF0]
AC_CODES = SHORT + [(9, [s for s in REST if s not in (0x01, 0x02, 0x11)])]
COSINE = [[math.cos((2 * x + 1) * u * math.pi / 16) * (math.sqrt(0.125) if u == 0 else 0.5)
           for x in range(8)] for u in range(8)]


def code_table(codes):
    table, code, length = {}, 0, 0
    for size, symbols in codes:
        code <<= size - length
        length = size
        for symbol in symbols:
            table[symbol] = format(code, f"0{size}b")
            code += 1
    return table


def segment(marker, data):
    return struct.pack(">BBH", 0xFF, marker, len(data) + 2) + data


def huffman_segment(kind, codes):
    counts = [0] * 16
    for size, symbols in codes:
        counts[size - 1] = len(symbols)
    return segment(0xC4, bytes([kind, *counts, *(s for _, symbols in codes for s in symbols)]))


def magnitude(value):
    size = abs(value).bit_length()
    bits = format(value if value > 0 else value + (1 << size) - 1, f"0{size}b") if size else ""
    return size, bits


def coefficients(block):
    rows = [[sum(line[x] * COSINE[u][x] for x in range(8)) for u in range(8)] for line in block]
    cells = [sum(rows[y][u] * COSINE[v][y] for y in range(8)) for v in range(8) for u in range(8)]
    return [round(cells[i] / STEPS[i]) for i in ZIGZAG]


def block_bits(values, before, dc, ac):
    size, bits = magnitude(values[0] - before)
    text, run = dc[size] + bits, 0
    for value in values[1:]:
        if value == 0:
            run += 1
            continue
        text += ac[0xF0] * (run // 16)
        size, bits = magnitude(value)
        text += ac[run % 16 << 4 | size] + bits
        run = 0
    return text + (ac[0x00] if run else "")


def to_ycc(red, green, blue):
    y = 0.299 * red + 0.587 * green + 0.114 * blue
    return y - 128, (blue - y) * 0.564, (red - y) * 0.713


def scan(rows):
    dc, ac = code_table(DC_CODES), code_table(AC_CODES)
    ycc = [[to_ycc(*p[:3]) for p in row] for row in rows]
    text, before = "", [0, 0, 0]
    for top in range(0, len(rows), 8):
        for left in range(0, len(rows), 8):
            for part in range(3):
                values = coefficients([[ycc[top + y][left + x][part] for x in range(8)]
                                       for y in range(8)])
                text += block_bits(values, before[part], dc, ac)
                before[part] = values[0]
    text += "1" * (-len(text) % 8)
    data = bytes(int(text[i:i + 8], 2) for i in range(0, len(text), 8))
    return data.replace(b"\xff", b"\xff\x00")


def jpeg(rows):
    size = len(rows)
    parts = b"".join(bytes([number, 0x11, 0]) for number in (1, 2, 3))
    tables = b"".join(bytes([number, 0]) for number in (1, 2, 3))
    return (b"\xff\xd8" + segment(0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0") +
            segment(0xDB, bytes([0, *(STEPS[i] for i in ZIGZAG)])) +
            segment(0xC0, struct.pack(">BHHB", 8, size, size, 3) + parts) +
            huffman_segment(0x00, DC_CODES) + huffman_segment(0x10, AC_CODES) +
            segment(0xDA, b"\3" + tables + b"\0\x3f\0") + scan(rows) + b"\xff\xd9")


def main():
    folder = pathlib.Path(__file__).resolve().parent
    (folder / "swiftpatch.ico").write_bytes(icon())
    (folder / "splash.jpg").write_bytes(jpeg(draw(192, SPLASH_ARROW, glow)))


if __name__ == "__main__":
    main()
