"""How gdb shows Lum's values.

gdb loads this by itself when it finds it in its auto-load folder, beside the library's name; otherwise
`source lum_gdb.py`. Then `print`, `info locals` and the windows of development environments show texts:

    uri = "http://h/a?x=1" = {scheme = "http", host = "h", path = "/a", query = "x=1"}
    text = "café" = {length = 4, count = 2, locked = false, capacity = 64}
    time = 2008-02-29T12:30:45.5Z = {ticks = 128487618455000000}

Compilers describe Lum::URI only where the library itself is compiled. Where that was done without debug information,
`print uri` says "<incomplete type>", and `print $lum(uri)` shows the text. Nothing here calls a function
of the program, so that core files are shown too. A value that is not (or no longer) constructed is shown as such.
"""

import datetime

import gdb
import gdb.printing

STATUSES = ["done", "output full", "malformed", "incomplete", "unmappable", "no such encoding"]
# A URI's strings in the order in which they lie behind the pointer to the dispatch table; three flags follow.
COMPONENTS = ["m_Scheme", "m_Authority", "m_ServerPort", "m_Path", "m_Query", "m_Fragment", "m_Username", "m_Password",
              "m_NonHierarchical"]
FLAGS = ["m_IsValid", "m_IsRelative", "m_IsHierarchical"]
# The same strings in the order of a URI's text, with the names that people know them by.
SHOWN = [("m_Scheme", "scheme"), ("m_Username", "user"), ("m_Password", "password"), ("m_Authority", "host"),
         ("m_ServerPort", "port"), ("m_Path", "path"), ("m_Query", "query"), ("m_Fragment", "fragment"),
         ("m_NonHierarchical", "non-hierarchical part")]
LONGEST = 1 << 20  # Bytes of a text that are read; a longer one is most likely not constructed.


class NotConstructed(Exception):
    """The memory of a value does not hold what it holds when it is constructed."""


def read(address, size):
    try:
        return gdb.selected_inferior().read_memory(address, size).tobytes()
    except gdb.error as error:
        raise NotConstructed() from error


def is_big_endian():
    return "big endian" in gdb.execute("show endian", to_string=True)


def read_number(address, size, signed=False):
    return int.from_bytes(read(address, size), "big" if is_big_endian() else "little", signed=signed)


def read_text(start, length):
    if not 0 <= length <= LONGEST:
        raise NotConstructed()
    return read(start, length) if length else b""


def bytes_of(string):
    """The bytes of a std::string of libstdc++."""
    return read_text(int(string["_M_dataplus"]["_M_p"]), int(string["_M_string_length"]))


def shown(text):
    """Bytes as gdb shows an array of characters: quoted, escaped, as long as `set print elements` says."""
    return gdb.Value(text, gdb.lookup_type("char").array(len(text) - 1)) if text else '""'


def uri_members(uri):
    """The bytes of each component and the three flags, by the names of the members."""
    if uri.type.strip_typedefs().fields():
        members = {name: bytes_of(uri[name]) for name in COMPONENTS}
        members.update((name, bool(uri[name])) for name in FLAGS)
        return members
    # A string of libstdc++: where it begins, its length, and 16 bytes.
    word = gdb.lookup_type("char").pointer().sizeof
    place = int(uri.address) + word
    members = {}
    for name in COMPONENTS:
        members[name] = read_text(read_number(place, word), read_number(place + word, word))
        place += 2 * word + 16
    members.update((name, read(place + i, 1) != b"\0") for i, name in enumerate(FLAGS))
    return members


def uri_text(uri):
    """What ToString(false) gives."""
    scheme, host = uri["m_Scheme"], uri["m_Authority"]
    if not uri["m_IsHierarchical"]:
        text = scheme + b":" + uri["m_NonHierarchical"]
    else:
        text = scheme + b":" if scheme and not uri["m_IsRelative"] else b""
        if not uri["m_IsRelative"] and (host or scheme == b"file"):
            user, password, port = uri["m_Username"], uri["m_Password"], uri["m_ServerPort"]
            text += b"//" + (user + (b":" + password if password else b"") + b"@" if user else b"")
            text += host + (b":" + port if port else b"")
        text += uri["m_Path"]
    query, fragment = uri["m_Query"], uri["m_Fragment"]
    return text + (b"?" + query if query else b"") + (b"#" + fragment if fragment else b"")


class Printer:
    """The text is made first; what it is made of are the children."""

    def __init__(self, value):
        if value.type.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
            value = value.referenced_value()
        self.members = []
        try:
            self.text = self.read(value)
        except NotConstructed:
            self.text = "<not constructed>"

    def to_string(self):
        return self.text

    def children(self):
        return iter(self.members)


class URIPrinter(Printer):
    def read(self, uri):
        members = uri_members(uri)
        self.members = [(name, shown(members[member])) for member, name in SHOWN if members[member]]
        return shown(uri_text(members)) if members["m_IsValid"] else "<not valid>"


class StringProxyPrinter(Printer):
    def read(self, proxy):
        return shown(bytes_of(proxy["m_Text"]))


class CStringPrinter(Printer):
    def read(self, string):
        units = string["m_pchChars"]
        pointer = units.type.sizeof
        # CStringData in front of the units: a pointer and three numbers of 32 bits, aligned as the pointer is.
        header = int(units) - (16 if pointer == 4 else 24)
        count, length, capacity = (read_number(header + pointer + 4 * i, 4, True) for i in range(3))
        if not 0 <= length <= capacity or count < -1 or count == 0:
            raise NotConstructed()
        # Only the shared empty buffer has no capacity; it is not locked, although its count says so.
        self.members = [("length", length), ("count", count), ("locked", count < 0 < capacity), ("capacity", capacity)]
        return units.lazy_string("UTF-16BE" if is_big_endian() else "UTF-16LE", length)


class TimeStampPrinter(Printer):
    def read(self, time):
        ticks = int(time["m_Ticks"])
        self.members = [("ticks", ticks)]
        if ticks < 0:
            return "<before 1601>"
        seconds, fraction = divmod(ticks, 10_000_000)
        days, second = divmod(seconds, 86_400)
        # Python's dates end with the year 9999; the calendar repeats every 400 years.
        cycles, days = divmod(days, 146_097)
        date = datetime.date.fromordinal(datetime.date(1601, 1, 1).toordinal() + days)
        return "%d-%02d-%02dT%02d:%02d:%02d%sZ" % (
            date.year + 400 * cycles, date.month, date.day, second // 3600, second // 60 % 60, second % 60,
            (".%07d" % fraction).rstrip("0") if fraction else "")


class ConversionPrinter(Printer):
    """ConvertedText of any text, and ConversionResult: how it ended, and what there is beside that."""

    def read(self, result):
        self.members = [(field.name, result[field]) for field in result.type.strip_typedefs().fields()
                        if field.name != "status"]
        status = int(result["status"])
        if not 0 <= status < len(STATUSES):
            raise NotConstructed()
        return STATUSES[status]


PRINTERS = {
    "^Lum::URI$": URIPrinter,
    "^Lum::URI::StringProxy$": StringProxyPrinter,
    "^CString$": CStringPrinter,
    "^Lum::TimeStamp$": TimeStampPrinter,
    "^Lum::ConvertedText<.*>$": ConversionPrinter,
    "^Lum::ConversionResult$": ConversionPrinter,
}


class TextOf(gdb.Function):
    """$lum(VALUE): the text of a Lum::URI, or of one that VALUE points to, also where its type is incomplete."""

    def __init__(self):
        super().__init__("lum")

    def invoke(self, value):
        if value.type.strip_typedefs().code == gdb.TYPE_CODE_PTR:
            value = value.dereference()
        return URIPrinter(value).to_string()


def register(objfile):
    printers = gdb.printing.RegexpCollectionPrettyPrinter("lum")
    for pattern, printer in PRINTERS.items():
        printers.add_printer(pattern.strip("^$"), pattern, printer)
    gdb.printing.register_pretty_printer(objfile, printers, replace=True)
    TextOf()


register(gdb.current_objfile())
