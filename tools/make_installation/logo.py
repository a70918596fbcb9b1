"""The small mark of the repair department: a board with its traces, drawn point by point and packed as a PNG."""

import struct
import zlib

SIZE = 96
GREEN = (46, 94, 78)
GOLD = (201, 162, 76)
CLEAR = (255, 255, 255, 0)


def _inside_round_square(x, y, low, high, radius):
    dx = max(low + radius - x, 0, x - (high - radius))
    dy = max(low + radius - y, 0, y - (high - radius))
    return low <= x <= high and low <= y <= high and dx * dx + dy * dy <= radius * radius


def _on_trace(x, y):
    """Four traces run out of the chip in the middle and end in round pads."""
    for side in (x, y, SIZE - 1 - x, SIZE - 1 - y):
        across = y if side in (x, SIZE - 1 - x) else x
        for lane in (36, 60):
            if 14 <= side <= 34 and abs(across - lane) <= 2:
                return True
            if (side - 16) ** 2 + (across - lane) ** 2 <= 25:
                return True
    return False


def _colour(x, y):
    if _inside_round_square(x, y, 32, 63, 4):
        return (*((255, 255, 255) if _inside_round_square(x, y, 41, 54, 3) else GOLD), 255)
    if not _inside_round_square(x, y, 2, SIZE - 3, 18):
        return CLEAR
    return (*(GOLD if _on_trace(x, y) else GREEN), 255)


def _sampled(column, row):
    """The mean of three by three points, so that the round edges come out smooth."""
    points = [_colour(column + dx / 3, row + dy / 3) for dx in range(3) for dy in range(3)]
    alpha = sum(point[3] for point in points)
    if not alpha:
        return bytes(CLEAR)
    return bytes([*(sum(p[i] * p[3] for p in points) // alpha for i in range(3)), alpha // 9])


def _chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def logo_png():
    rows = b"".join(b"\0" + b"".join(_sampled(x, y) for x in range(SIZE)) for y in range(SIZE))
    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", header) + _chunk(b"IDAT", zlib.compress(rows, 9))
            + _chunk(b"IEND", b""))
