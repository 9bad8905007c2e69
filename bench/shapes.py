"""Tables of shapes that no machine has, each the worst for some part of the work."""
import struct


def structure(kind, handle, fields=b"", strings=()):
    texts = b"".join(text + b"\0" for text in strings) or b"\0"
    return struct.pack("<BBH", kind, 4 + len(fields), handle & 0x7FFF) + fields + texts + b"\0"


def dump(structures):
    """The table behind a 64-bit entry point (version 3.2), as the field's tools save it."""
    table = b"".join(structures) + structure(127, 0xFEFF)
    entry = struct.pack("<5sBBBBBBBIQ", b"_SM3_", 0, 24, 3, 2, 0, 1, 0, len(table), 32)
    entry = entry[:5] + bytes([-sum(entry) & 0xFF]) + entry[6:]
    return entry.ljust(32, b"\0") + table


def memory_device(handle, array):
    """A module of 16 GB; no texts."""
    return structure(17, handle, struct.pack("<HHHHHBBBBBH", array, 0xFFFE, 64, 64, 0x4000, 9, 0, 0, 0, 26, 128))


def one_text_named_often(size):
    """The six texts of a system that are one and the same, of control characters."""
    fields = bytes([1, 1, 1, 1]) + bytes(16) + bytes([6, 1, 1])
    return dump([structure(1, 1, fields, [b"\x01" * size])])


def named_device(handle, *texts):
    """A module of 16 GB: its locator, bank, maker, serial number, asset tag and part number."""
    fields = struct.pack("<HHHHHBBBBBHHBBBB", 0xFFFE, 0xFFFE, 64, 64, 0x4000, 9, 0, 1, 2, 26, 128, 3200, 3, 4, 5, 6)
    return structure(17, handle, fields, [text.encode() for text in texts])


def twins(count, turn):
    """Devices that nothing but their order tells from each other."""
    return dump(named_device(n, "Unknown", "Unknown", "Tindrel", "Unknown", "Unknown", "TM16") for n in range(count))


def strangers(count, turn):
    """No two devices have a text in common, nor has one of the first turn with any of the second."""
    return dump(named_device(n, *(f"{text}{turn}-{n}" for text in ("A", "B", "M", "S", "T", "P"))) for n in range(count))


def without_places(count, turn):
    """What they say tells them apart; the second turn begins in their middle."""
    first = turn * count // 2
    return dump(named_device(n, "Unknown", "Unknown", "Tindrel", "Unknown", f"T{(first + n) % count}", "TM16")
                for n in range(count))


# Two tables each, of as many devices as asked for.
CHANGES = {"all the same": twins, "all different": strangers, "without places": without_places}

SHAPES = {
    "a text of control characters, named six times": lambda: one_text_named_often(0x100000),
    "structures of six bytes": lambda: dump(structure(17, n) for n in range(150_000)),
    "255 texts of one letter in each structure":
        lambda: dump(structure(11, n, b"\xff", [b"x"] * 255) for n in range(4_000)),
    "255 children of each structure": lambda: dump(structure(5, n, bytes(10) + b"\xff", ()) for n in range(2_000)),
    "each device inside the one before": lambda: dump(memory_device(n, n - 1) for n in range(1, 30_000)),
    "texts that are missing": lambda: dump(structure(1, n, b"\x09\x09\x09\x09") for n in range(60_000)),
}
