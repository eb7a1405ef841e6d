"""Writes inputs of 1 MB that are as much work as we could think of, a folder for each fuzz target.

largest_inputs.py FOLDER: the tests replay them; none may take more than a second or 256 MB.
"""

import base64
import pathlib
import plistlib
import struct
import sys
import zlib

SIZE = 1_000_000
# No longer manifest is ever read.
MANIFEST_SIZE = 65_536


def repeated(part, before=b"", after=b"", size=SIZE):
    """As many parts as there is room for."""
    return before + part * ((size - len(before) - len(after)) // len(part)) + after


def numbered(part, before, after, size=SIZE):
    """As many parts as there is room for, each with its number in it; a comma between two."""
    parts = []
    room = size - len(before) - len(after)
    while room > 0:
        parts.append(part % len(parts))
        room -= len(parts[-1]) + 1
    return before + b",".join(parts[:-1]) + after


def executable_image():
    return {
        "universal": repeated(struct.pack(">5I", 0x0100000C, 0, 4096, 32, 12),
                              struct.pack(">2I", 0xCAFEBABE, SIZE // 20)),
        "thin": repeated(struct.pack("<2I", 0x0C, 8), thin_header(SIZE // 8 - 4)),
    }


def thin_header(commands):
    return struct.pack("<8I", 0xFEEDFACF, 0x0100000C, 0, 2, commands, 8 * commands, 0, 0)


def code_directory(identifier):
    fixed = 44
    return struct.pack(">9I4BI", 0xFADE0C02, fixed + len(identifier), 0x20001, 0,
                       fixed + len(identifier), fixed, 0, 0, 4096, 32, 2, 0, 12, 0) + identifier


def code_signature():
    directory = code_directory(b"com.example.Tool\0")
    count = (SIZE - len(directory)) // 8 - 2
    slots = [(number, 12 + 8 * count) for number in range(count)]
    index = b"".join(struct.pack(">2I", *slot) for slot in slots)
    entries = repeated(struct.pack(">5I", 0x0100000C, 0, SIZE - 4096, 4096, 12), size=SIZE - 4096)
    return {
        "slots": struct.pack(">3I", 0xFADE0CC0, SIZE, count) + index + directory,
        "commands": repeated(struct.pack("<2I", 0x0C, 8), thin_header(SIZE // 8 - 4)),
        "architectures": struct.pack(">2I", 0xCAFEBABE, len(entries) // 20) + entries,
        "identifier": code_directory(b"a" * (SIZE - 44)),
    }


def binary_list(objects, reference_size):
    """A binary property list of these objects; the first is the root."""
    body = b"bplist00"
    offsets = []
    for each in objects:
        offsets.append(len(body))
        body += each
    table = b"".join(struct.pack(">I", offset) for offset in offsets)
    return body + table + struct.pack(">6x2B3Q", 4, reference_size, len(objects), 0, len(body))


def binary_array(references):
    return b"\xaf\x12" + struct.pack(">I", len(references) // 2) + references


def property_list():
    xml = b'<?xml version="1.0"?><plist version="1.0">'
    half = SIZE // 4 - 100
    shared = [binary_array(b"\0\1" * half), binary_array(b"\0\2" * half), b"\x51a"]
    long_text = b"\x6f\x12" + struct.pack(">I", half) + "\u00e9".encode("utf-16-be") * half
    return {
        "xml_deep": repeated(b"<array>", xml),
        "xml_items": repeated(b"<true/>", xml + b"<array>", b"</array></plist>"),
        "xml_keys": numbered(b"<key>%d</key><true/>", xml + b"<dict>", b"</dict></plist>")
        .replace(b",", b""),
        "xml_entities": repeated(b"&amp;", xml + b"<string>", b"</string></plist>"),
        "xml_comments": repeated(b"<!---->", xml, b"<true/></plist>"),
        "binary_shared": binary_list(shared, 2),
        "binary_keys": plistlib.dumps({f"{number}": True for number in range(60_000)},
                                      fmt=plistlib.FMT_BINARY),
        "binary_texts": binary_list([binary_array(b"\0\1" * half), long_text], 2),
        "old_deep": b"(" * SIZE,
        "old_items": repeated(b"a,", b"(", b"a)"),
        "old_keys": numbered(b"k%d=v;", b"{", b"}").replace(b",", b""),
        "old_escapes": repeated(b"\\U00e9", b'{a="', b'";}'),
        "old_data": repeated(b"00 ", b"{a=<", b">;}"),
    }


def chunk(kind, content):
    return (struct.pack(">I", len(content)) + kind + content
            + struct.pack(">I", zlib.crc32(kind + content)))


def png(side, *chunks):
    header = struct.pack(">2I5B", side, side, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + b"".join((chunk(b"IHDR", header), *chunks, chunk(b"IEND", b"")))


def deflated(megabytes):
    """A stream that becomes so many times a million bytes, all zero."""
    packer = zlib.compressobj(9)
    part = packer.compress(bytes(1_000_000)) + packer.flush(zlib.Z_FULL_FLUSH)
    header, part = part[:2], part[2:]
    last = b"\x03\0"
    sums = megabytes * 1_000_000 % 65_521 << 16 | 1
    return header + part * megabytes + last + struct.pack(">I", sums)


def icon():
    def family(content):
        return b"icns" + struct.pack(">I", 8 + len(content)) + content

    def entry(kind, content):
        return kind + struct.pack(">I", 8 + len(content)) + content

    bomb = deflated(950)
    profile = chunk(b"iCCP", b"a\0\0" + bomb)
    picture = chunk(b"IDAT", deflated(5))
    return {
        "empty_entries": family(repeated(entry(b"ic07", b""), size=SIZE - 8)),
        "runs": family(entry(b"it32", repeated(b"\xff\0", bytes(4), size=SIZE - 16))),
        "literals": family(entry(b"it32", repeated(b"\0a", bytes(4), size=SIZE - 16))),
        "picture_bomb": png(1024, chunk(b"IDAT", bomb)),
        "profile_bomb": png(1024, profile, picture),
        "text_bomb": png(1024, chunk(b"zTXt", b"a\0\0" + bomb), picture),
        "huge_picture": png(65535, chunk(b"IDAT", bomb)),
        "many_texts": png(1024, chunk(b"tEXt", b"a\0") * 70_000, picture),
        "many_pictures": family(entry(b"ic09", png(512, chunk(b"IDAT", deflated(2)))) * 400),
        "noise": png(1024, chunk(b"IDAT", zlib.compress(bytes(range(256)) * 3500, 0))),
    }


RECORD = (b'{"id":"E621E1F8-C36C-495A-93FC-%012X","name":"N","bundleIdentifier":"b",'
          b'"signingIdentifier":"s","path":"/p"}')
SAME_RECORD = RECORD % 0


def stored_list():
    with_identities = SAME_RECORD[:-1] + b',"auxiliaryCodeIdentities":['
    return {
        "records": numbered(RECORD, b"[", b"]"),
        "same_records": repeated(SAME_RECORD + b",", b"[", SAME_RECORD + b"]"),
        "identities": numbered(b'{"signingIdentifier":"%d"}', b"[" + with_identities, b"]}]"),
        "identities_of_teams": numbered(
            b'{"signingIdentifier":"a","teamIdentifier":"%d"}', b"[" + with_identities, b"]}]"),
        "deep": b"[" * SIZE,
        "accents": repeated("\u0301".encode(), b"[" + SAME_RECORD[:-1] + b',"name":"', b'"}]'),
        "escapes": repeated(b"\\u0301", b"[" + SAME_RECORD[:-1] + b',"teamIdentifier":"', b'"}]'),
        "icon": repeated(b"QUJD", b"[" + SAME_RECORD[:-1] + b',"iconData":"', b'"}]'),
        "unknown_keys": numbered(b'"%d":0', b"[" + SAME_RECORD[:-1] + b",", b"}]"),
    }


def observed_processes():
    start = b'{"signingIdentifier":"%d","firstSeenAt":0,"lastSeenAt":799999999,"connectionCount":1'
    one = start % 0
    return {
        "processes": numbered(start + b"}", b"[", b"]"),
        "same": repeated(one + b"},", b"[", one + b"}]"),
        "owned": numbered(start + b',"executablePath":"/Applications/Tool.app/x"}', b"[", b"]"),
        "dotted_path": repeated(b"../a/", b"[" + one + b',"executablePath":"/', b'"}]'),
        "accents": repeated("\u0301".encode(), b"[" + one + b',"displayName":"', b'"}]'),
        "deep": b"[" * SIZE,
        "unknown_keys": numbered(b'"%d":0', b"[" + one + b",", b"}]"),
    }


def update_manifest():
    address = b'"downloadURL":"https://kestrelworks.dev/'
    return {
        "digits": repeated(b"1", b'{"version":"', b'",' + address + b'"}', MANIFEST_SIZE),
        "numbers": repeated(b"1.", b'{"version":"', b'",' + address + b'"}', MANIFEST_SIZE),
        "accents": repeated("\u0301".encode(), b'{"version":"', b'",' + address + b'"}',
                            MANIFEST_SIZE),
        "address": repeated(b"../", b'{"version":"1",' + address, b'"}', MANIFEST_SIZE),
        "percents": repeated(b"%41", b'{"version":"1",' + address, b'"}', MANIFEST_SIZE),
        "host": repeated(b"a.", b"https://", b"kestrelworks.dev", MANIFEST_SIZE),
        "punycode": repeated("\u00e9.".encode(), b"https://", b"kestrelworks.dev", MANIFEST_SIZE),
        "deep": b"[" * MANIFEST_SIZE,
    }


def identity_keys():
    paths = numbered(b"/a/%d", b"", b"").replace(b",", b"\n")
    keys = b"\n".join(b"." + base64.b64encode(b"%d" % number) for number in range(70_000))
    return {
        "empty_lines": b"\n" * SIZE,
        "lines": b"a\n" * (SIZE // 2),
        "relative_bundles": b".app\n" * (SIZE // 5),
        "paths": paths,
        "keys": keys,
        "long_key": b"." + b"QUJD" * (SIZE // 4 - 1),
        "long_path": repeated(b"/..", b"/a"),
        "deep_path": b"/a" * (SIZE // 2),
        "dots": repeated(b"/.", b"/a"),
        "accents": repeated("\u0301".encode(), b"/a"),
    }


def behaviour():
    return {
        "faults": repeated(b'{"operation":"save"},', b'{"faults":[', b'{"operation":"save"}]}'),
        "groups": numbered(b'"%d"', b'{"applicationGroups":[', b"]}"),
        "unknown_keys": numbered(b'"%d":0', b"{", b"}"),
        "path": repeated(b"/a", b'{"bundlePath":"', b'"}'),
        "accents": repeated("\u0301".encode(), b'{"build":"', b'"}'),
        "deep": repeated(b'{"faults":'),
    }


TARGETS = (executable_image, code_signature, property_list, icon, stored_list, observed_processes,
           update_manifest, identity_keys, behaviour)


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: largest_inputs.py FOLDER")
    for target in TARGETS:
        folder = pathlib.Path(sys.argv[1]) / f"fuzz_{target.__name__}"
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in target().items():
            assert len(content) <= 1 << 20, f"{name}: {len(content)}"
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
