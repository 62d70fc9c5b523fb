#!/usr/bin/env python3
"""Writes the seed fonts of fuzz_type42 into fuzz/corpus/fuzz_type42/.

Tiny TrueType files holding just the tables the converter reads (head, maxp,
post, name, loca, glyf), in the shapes worth starting from: "post" 2.0 with
extra glyph names and the short "loca" form, "post" 3.0 with the long form
and odd glyph offsets, glyph 0 with a name of its own, and a font whose
70000-byte extra table has no split point. Run it again after changing it;
the files are checked in.
"""
import os
import struct

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus", "fuzz_type42")


def head(long_loca, upem=2048):
    return struct.pack(">IIIIHH16xhhhhHHhhh", 0x00010000, 0x00018000, 0, 0x5F0F3CF5, 0,
                       upem, -100, -512, 2100, 1900, 0, 8, 2, 1 if long_loca else 0, 0)


def post(fmt, indices=(), extra=(), max_mem=0):
    body = struct.pack(">I12xII8x", fmt, 0, max_mem)
    if fmt != 0x00020000:
        return body
    body += struct.pack(">H", len(indices)) + b"".join(struct.pack(">H", i) for i in indices)
    return body + b"".join(bytes([len(n)]) + n.encode() for n in extra)


def name(ps_name):
    data = ps_name.encode()
    wide = ps_name.encode("utf-16-be")
    records = struct.pack(">6H", 1, 0, 0, 6, len(data), 0)
    records += struct.pack(">6H", 3, 1, 0x409, 6, len(wide), len(data))
    return struct.pack(">3H", 0, 2, 6 + 24) + records + data + wide


def glyphs(sizes, long_loca):
    loca, glyf, at = b"", b"", 0
    for g, size in enumerate(list(sizes) + [None]):
        loca += struct.pack(">I", at) if long_loca else struct.pack(">H", at // 2)
        if size is None:
            break
        glyf += bytes((g * 7 + i) & 0xFF for i in range(size))
        at += size
    return loca, glyf


def font(sizes, long_loca, post_table, extra_tables=()):
    loca, glyf = glyphs(sizes, long_loca)
    tables = [(b"head", head(long_loca)), (b"maxp", struct.pack(">IH", 0x5000, len(sizes))),
              (b"post", post_table), (b"name", name("SeedFont"))]
    tables += list(extra_tables) + [(b"loca", loca), (b"glyf", glyf)]
    directory = struct.pack(">IHHHH", 0x00010000, len(tables), 0, 0, 0)
    offset = 12 + 16 * len(tables)
    body = b""
    for tag, data in tables:
        directory += tag + struct.pack(">III", 0, offset, len(data))
        padded = data + b"\0" * (-len(data) % 4)
        body += padded
        offset += len(padded)
    return directory + body


def main():
    os.makedirs(OUT, exist_ok=True)
    seeds = {
        "post2-short-loca.ttf": font([8, 12, 0, 6, 10, 4], False,
                                     post(0x00020000, (0, 36, 3, 258, 259, 258),
                                          ("Euro", "snowman"), 65536)),
        "post3-long-loca.ttf": font([7, 13, 0, 5], True, post(0x00030000)),
        "glyph0-named.ttf": font([4, 4, 4], False,
                                 post(0x00020000, (260, 36, 259), ("a", "b", "zero0"))),
        "large-table.ttf": font([5000] * 4, False, post(0x00030000),
                                [(b"GPOS", bytes(i * 31 & 0xFF for i in range(70000)))]),
    }
    for file, data in seeds.items():
        with open(os.path.join(OUT, file), "wb") as f:
            f.write(data)


if __name__ == "__main__":
    main()
