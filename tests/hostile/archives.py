"""ZIP archives, byte by byte, with any lie in them, and such as real programs make."""

import io
import struct
import zipfile
import zlib
from dataclasses import dataclass, field

STORED, DEFLATED = 0, 8
ENCRYPTED, DESCRIPTOR, STRONG, UTF8, MASKED = 1, 1 << 3, 1 << 6, 1 << 11, 1 << 13
UNIX, WINDOWS, MACOS = 3, 10, 19
REGULAR, FOLDER, LINK, FIFO, DEVICE = 0o100644, 0o040755, 0o120777, 0o010644, 0o020644
FULL16, FULL32 = 0xFFFF, 0xFFFFFFFF


@dataclass
class Entry:
    """What the directory says; `local` has what the header before the bytes says instead."""

    name: bytes
    data: bytes = b"{}"
    method: int = DEFLATED
    flags: int = UTF8
    mode: int = REGULAR
    attributes: int = 0
    system: int = UNIX
    disk: int = 0
    size: int = None
    packed_size: int = None
    checksum: int = None
    offset: int = None
    extra: bytes = b""
    local: dict = field(default_factory=dict)
    local_extra: bytes = b""
    # Bytes behind the packed ones, such as those that tell the sizes again.
    behind: bytes = b""
    # Takes the place of an earlier entry instead of an own one.
    shared_with: int = None
    packed: bytes = None

    def __post_init__(self):
        if isinstance(self.name, str):
            self.name = self.name.encode()
        if self.packed is None:
            self.packed = deflate(self.data) if self.method == DEFLATED else self.data
        self.size = len(self.data) if self.size is None else self.size
        self.packed_size = len(self.packed) if self.packed_size is None else self.packed_size
        self.checksum = zlib.crc32(self.data) if self.checksum is None else self.checksum


def deflate(data):
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    return packer.compress(data) + packer.flush()


def extra(number, data):
    return struct.pack("<HH", number, len(data)) + data


def local_header(entry):
    values = {name: getattr(entry, name) for name in ("name", "flags", "method", "checksum", "packed_size", "size")}
    values.update(entry.local)
    return struct.pack("<IHHHHHIIIHH", 0x04034B50, 20, values["flags"], values["method"], 0, 33, values["checksum"],
                       values["packed_size"], values["size"], len(values["name"]), len(entry.local_extra)) \
        + values["name"] + entry.local_extra


def directory_entry(entry, offset):
    return struct.pack("<IBBHHHHHIIIHHHHHII", 0x02014B50, 20, entry.system, 20, entry.flags, entry.method, 0, 33,
                       entry.checksum, entry.packed_size, entry.size, len(entry.name), len(entry.extra), 0, entry.disk,
                       0,
                       entry.mode << 16 | entry.attributes, offset) + entry.name + entry.extra


def end(count, size, offset, comment=b"", disk=0):
    return struct.pack("<IHHHHIIH", 0x06054B50, disk, disk, count, count, size, offset, len(comment)) + comment


def end64(count, size, offset, place, disk=0, disks=1):
    return struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, disk, disk, count, count, size, offset) \
        + struct.pack("<IIQI", 0x07064B50, disk, place, disks)


def archive(*entries, before=b"", comment=b"", disk=0, count=None, size_lie=0, offset_lie=0, zip64=None, full=False):
    """zip64: a function of (count, size, offset, place) that gives the ZIP64 end; full: the other end is all 0xff."""
    out, directory, places = before, b"", []
    for entry in entries:
        places.append(len(out) if entry.shared_with is None else places[entry.shared_with])
        if entry.shared_with is None:
            out += local_header(entry) + entry.packed + entry.behind
        directory += directory_entry(entry, places[-1] if entry.offset is None else entry.offset)
    count = len(entries) if count is None else count
    begin = len(out)
    out += directory
    if zip64:
        out += zip64(len(entries), len(directory), begin, len(out))
    numbers = (FULL16, FULL32, FULL32) if full else (count, len(directory) + size_lie, begin + offset_lie)
    return out + end(*numbers, comment, disk)


def sizes64(*numbers):
    return extra(1, struct.pack("<" + "Q" * len(numbers), *numbers))


def streamed(name, data, numbers="<II", signature=True, **changes):
    """An entry of a writer that knows the sizes only behind the bytes."""
    packed = deflate(data)
    behind = (b"PK\x07\x08" if signature else b"") + struct.pack("<I", zlib.crc32(data)) \
        + struct.pack(numbers, len(packed), len(data))
    changes.setdefault("local", {"checksum": 0, "packed_size": 0, "size": 0})
    return Entry(name, data, flags=UTF8 | DESCRIPTOR, behind=behind, **changes)


def by_library(files, stream=False, **options):
    """As Python's own library writes it."""
    out = io.BytesIO()

    class Stream:
        """Takes bytes and cannot go back, like a pipe."""

        write = staticmethod(out.write)
        flush = staticmethod(out.flush)

    force = options.pop("force_zip64", False)
    with zipfile.ZipFile(Stream() if stream else out, "w", **options) as target:
        for name, data in files.items():
            info = zipfile.ZipInfo(name, (2020, 1, 1, 0, 0, 0))
            info.compress_type = options.get("compression", zipfile.ZIP_STORED)
            info.external_attr = (FOLDER if name.endswith("/") else REGULAR) << 16
            with target.open(info, "w", force_zip64=force) as entry:
                entry.write(data)
    return out.getvalue()
