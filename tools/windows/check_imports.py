#!/usr/bin/env python3
"""Fails where a program or library in a folder asks for a DLL that lies neither beside the programs nor among Windows'
own. What starts under wine proves nothing here: wine brings libraries that Windows lacks.
usage: check_imports.py folder"""

import pathlib
import struct
import sys

# Each is there since Windows 10 1809, in every edition.
OF_WINDOWS = frozenset("""
    advapi32 authz bcrypt comctl32 comdlg32 crypt32 d3d11 d3d12 d3d9 dcomp dnsapi dwmapi dwrite dxgi gdi32 imm32 iphlpapi
    kernel32 mpr msvcrt ncrypt netapi32 ntdll ole32 oleaut32 propsys rpcrt4 secur32 setupapi shcore shell32 shlwapi user32
    userenv uxtheme version winmm ws2_32 wtsapi32
    api-ms-win-core-synch-l1-2-0 api-ms-win-core-winrt-l1-1-0 api-ms-win-core-winrt-string-l1-1-0""".split())
DRIVERS_OF_WINDOWS = frozenset(["winspool.drv"])
NORMAL, DELAYED = 1, 13  # entries of the table of data directories


class Image:
    """The parts of a 64-bit Windows program that name other files."""

    def __init__(self, data):
        self.data = data
        header = struct.unpack_from("<I", data, 0x3C)[0]
        if data[:2] != b"MZ" or data[header:header + 4] != b"PE\0\0":
            raise ValueError("no Windows program")
        sections, = struct.unpack_from("<H", data, header + 6)
        self.optional = header + 24
        if struct.unpack_from("<H", data, self.optional)[0] != 0x20B:
            raise ValueError("no 64-bit program")
        size_of_optional, = struct.unpack_from("<H", data, header + 20)
        self.sections = [struct.unpack_from("<IIII", data, self.optional + size_of_optional + 40 * i + 8)
                         for i in range(sections)]

    def offset(self, address):
        for size, start, raw_size, raw in self.sections:
            if start <= address < start + max(size, raw_size):
                return address - start + raw
        raise ValueError(f"no section holds {address:#x}")

    def imported(self, directory, entry_size, name_at):
        table, = struct.unpack_from("<I", self.data, self.optional + 112 + 8 * directory)
        names = []
        while table:
            name, = struct.unpack_from("<I", self.data, self.offset(table) + name_at)
            if not name:
                break
            start = self.offset(name)
            names.append(self.data[start:self.data.index(b"\0", start)].decode("ascii").lower())
            table += entry_size
        return names

    def imports(self):
        return self.imported(NORMAL, 20, 12) + self.imported(DELAYED, 32, 4)


def is_of_windows(name):
    return name in DRIVERS_OF_WINDOWS or name.endswith(".dll") and name[:-4] in OF_WINDOWS


def main():
    folder = pathlib.Path(sys.argv[1])
    # A plugin's libraries are looked for beside the program that loads it.
    beside = {file.name.lower() for file in folder.iterdir()}
    images = sorted(file for file in folder.rglob("*") if file.suffix.lower() in (".exe", ".dll"))
    faults = 0
    for file in images:
        imports = Image(file.read_bytes()).imports()
        missing = [name for name in imports if name not in beside and not is_of_windows(name)]
        if missing or not imports:
            faults += 1
            print(f"{file.relative_to(folder)} asks for {', '.join(missing) or 'nothing at all'}")
    print(f"imports: {len(images)} programs and libraries, {faults} that Windows cannot start")
    return 1 if faults or not images else 0


if __name__ == "__main__":
    sys.exit(main())
