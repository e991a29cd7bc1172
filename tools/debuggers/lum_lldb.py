"""How lldb shows Lum's values: `command script import lum_lldb.py`, in ~/.lldbinit say. Then `frame variable` shows

    (Lum::URI) uri = "http://h/a?x=1"
    (CString) text = "café" (length 4, count 2, capacity 64)
    (Lum::TimeStamp) time = 2008-02-29T12:30:45.5Z

What is expanded below a value are its members. A URI is read by its layout, which is that of libstdc++'s strings, so
that its text is also shown where the library was compiled without debug information. Nothing here calls a function of
the program. A value that is not (or no longer) constructed is shown as such.
"""

import datetime
import json

import lldb

STATUSES = ["done", "output full", "malformed", "incomplete", "unmappable", "no such encoding"]
LONGEST = 1 << 20  # Bytes of a text that are read; a longer one is most likely not constructed.


class NotConstructed(Exception):
    """The memory of a value does not hold what it holds when it is constructed."""


def read(process, address, size):
    error = lldb.SBError()
    data = process.ReadMemory(address, size, error) if size else b""
    if error.Fail():
        raise NotConstructed()
    return data


def read_number(process, address, size, signed=False):
    order = "big" if process.GetByteOrder() == lldb.eByteOrderBig else "little"
    return int.from_bytes(read(process, address, size), order, signed=signed)


def read_string(process, address):
    """The bytes of a std::string of libstdc++: where it begins, its length, and 16 bytes."""
    word = process.GetAddressByteSize()
    length = read_number(process, address + word, word)
    if length > LONGEST:
        raise NotConstructed()
    return read(process, read_number(process, address, word), length)


def shown(text):
    return json.dumps(text.decode(errors="backslashreplace"), ensure_ascii=False)


def place_of(value):
    """Where the object is; of a reference or pointer, what it leads to."""
    kind = value.GetType().GetCanonicalType()
    return value.GetValueAsUnsigned() if kind.IsReferenceType() or kind.IsPointerType() else value.GetLoadAddress()


def summary(function):
    """A summary that says so where the value is not constructed."""
    def guarded(value, _):
        try:
            return function(value.GetNonSyntheticValue(), value.GetProcess())
        except NotConstructed:
            return "<not constructed>"
    guarded.__name__ = function.__name__
    return guarded


@summary
def uri(value, process):
    """What ToString(false) gives, of the nine strings and three flags behind the pointer to the dispatch table."""
    word = process.GetAddressByteSize()
    place = place_of(value) + word
    size = 2 * word + 16
    scheme, host, port, path, query, fragment, user, password, other = (
        read_string(process, place + i * size) for i in range(9))
    valid, relative, hierarchical = (flag != 0 for flag in read(process, place + 9 * size, 3))
    if not valid:
        return "<not valid>"
    if not hierarchical:
        text = scheme + b":" + other
    else:
        text = scheme + b":" if scheme and not relative else b""
        if not relative and (host or scheme == b"file"):
            text += b"//" + (user + (b":" + password if password else b"") + b"@" if user else b"")
            text += host + (b":" + port if port else b"")
        text += path
    return shown(text + (b"?" + query if query else b"") + (b"#" + fragment if fragment else b""))


@summary
def string_proxy(value, process):
    return shown(read_string(process, place_of(value)))


@summary
def cstring(value, process):
    word = process.GetAddressByteSize()
    units = read_number(process, place_of(value), word)
    # CStringData in front of the units: a pointer and three numbers of 32 bits, aligned as the pointer is.
    header = units - (16 if word == 4 else 24)
    count, length, capacity = (read_number(process, header + word + 4 * i, 4, True) for i in range(3))
    if not 0 <= length <= capacity or count < -1 or count == 0:
        raise NotConstructed()
    most = min(length, LONGEST)
    text = read(process, units, 2 * most).decode(
        "utf-16-be" if process.GetByteOrder() == lldb.eByteOrderBig else "utf-16-le", "replace")
    # Only the shared empty buffer has no capacity; it is not locked, although its count says so.
    state = "locked" if count < 0 < capacity else "count %d" % count
    return "%s (length %d, %s, capacity %d)" % (json.dumps(text, ensure_ascii=False), length, state, capacity)


@summary
def time_stamp(value, process):
    ticks = read_number(process, place_of(value), 8, True)
    if ticks < 0:
        return "<%d ticks, before 1601>" % ticks
    seconds, fraction = divmod(ticks, 10_000_000)
    days, second = divmod(seconds, 86_400)
    # Python's dates end with the year 9999; the calendar repeats every 400 years.
    cycles, days = divmod(days, 146_097)
    date = datetime.date.fromordinal(datetime.date(1601, 1, 1).toordinal() + days)
    return "%d-%02d-%02dT%02d:%02d:%02d%sZ" % (
        date.year + 400 * cycles, date.month, date.day, second // 3600, second // 60 % 60, second % 60,
        (".%07d" % fraction).rstrip("0") if fraction else "")


@summary
def conversion(value, _):
    status = value.GetChildMemberWithName("status").GetValueAsUnsigned(len(STATUSES))
    if status >= len(STATUSES):
        raise NotConstructed()
    return STATUSES[status]


SUMMARIES = [
    (uri, "^Lum::URI$"),
    (string_proxy, "^Lum::URI::StringProxy$"),
    (cstring, "^CString$"),
    (time_stamp, "^Lum::TimeStamp$"),
    (conversion, "^Lum::Conver(tedText<.*>|sionResult)$"),
]


def __lldb_init_module(debugger, _):
    for function, pattern in SUMMARIES:
        # -e: members can still be expanded.
        debugger.HandleCommand(
            'type summary add -e -w lum -F %s.%s -x "%s"' % (__name__, function.__name__, pattern))
    debugger.HandleCommand("type category enable lum")
