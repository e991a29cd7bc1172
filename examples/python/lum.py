"""Lum for Python, by ctypes over <Lum/lum.h>; needs nothing but the shared library.

Texts are str, in UTF-8 for the library. Bytes that are not UTF-8 come back as surrogates, as os.fsdecode gives them, and
go in again unchanged. What fails raises lum.Error, which has the status and its text.

The library is the one that the variable LUM_LIBRARY names, otherwise liblum.so.1.

>>> uri = URI("HTTP://Host/a%20b/c.txt?x=1&y=2&x=3")
>>> uri.host, uri.path, str(uri)
('host', '/a b/c.txt', 'http://host/a%20b/c.txt?x=1&y=2&x=3')
>>> uri.path = "/new path/d.txt"
>>> uri.stored("path"), uri.file_name
('/new%20path/d.txt', 'd.txt')
>>> list(uri.pairs())
[('x', '1'), ('y', '2'), ('x', '3')]
>>> uri["x"], uri.get("z", "none")
('3', 'none')
>>> uri["z"] = "a&b"
>>> str(uri)
'http://host/new%20path/d.txt?x=3&y=2&z=a%26b'
"""
import ctypes
import datetime
import enum
import os

_library = ctypes.CDLL(os.environ.get("LUM_LIBRARY", "liblum.so.1"))
_Size, _Text, _Object = ctypes.c_size_t, ctypes.c_char_p, ctypes.c_void_p
_library.lum_status_text.restype = _Text
_library.lum_time_now.restype = ctypes.c_int64
OK, TRUNCATED, NOT_FOUND, UNRELATED = range(4)


class Error(ValueError):
    """What a status says, with the status and, for texts that stop at a place, the offset.

    >>> URI("c:/dir")
    Traceback (most recent call last):
    lum.Error: scheme shorter than two characters
    """

    def __init__(self, status, offset=None):
        super().__init__(_library.lum_status_text(status).decode())
        self.status, self.offset = status, offset


class Relation(enum.IntEnum):
    NONE, CHILD, SAME, PARENT = range(4)


COMPONENTS = ("scheme", "user", "password", "host", "port", "path", "query", "fragment", "non_hierarchical")
PATH_STYLES = ("native", "mac", "unix", "win")
_STORED, _UNESCAPED = 0, 1


def _in(text):
    """The two arguments of a text that goes in."""
    data = text if isinstance(text, bytes) else text.encode("utf-8", "surrogateescape")
    return _Text(data), _Size(len(data))


def _check(status):
    if status != OK:
        raise Error(status)


def _written(function, *arguments, tail=()):
    """The bytes that a function writes, with the status behind them."""
    size, capacity = _Size(), 256
    while True:
        buffer = ctypes.create_string_buffer(capacity)
        status = function(*arguments, buffer, _Size(capacity), ctypes.byref(size), *tail)
        if status != TRUNCATED:
            return buffer.raw[: size.value], status
        capacity = size.value + 1


def _out(function, *arguments):
    data, status = _written(function, *arguments)
    _check(status)
    return data.decode("utf-8", "surrogateescape")


class URI:
    """A URI. Its components are attributes, unescaped; setting one escapes it for its place."""

    def __init__(self, text=""):
        self._object = _Object()
        _check(_library.lum_uri_create(*_in(text), ctypes.byref(self._object)))

    def __del__(self):
        _library.lum_uri_free(self._object)

    @classmethod
    def _of(cls, function, *arguments):
        uri = cls.__new__(cls)
        uri._object = _Object()
        _check(function(*arguments, ctypes.byref(uri._object)))
        return uri

    def copy(self):
        return URI._of(_library.lum_uri_copy, self._object)

    def __str__(self):
        return _out(_library.lum_uri_text, self._object, _STORED)

    def __repr__(self):
        return f"URI({str(self)!r})"

    def __eq__(self, other):
        return isinstance(other, URI) and str(self) == str(other)

    __hash__ = None  # It changes.

    def stored(self, component):
        """A component with its escapes."""
        return _out(_library.lum_uri_get, self._object, COMPONENTS.index(component), _STORED)

    file_name = property(lambda self: _out(_library.lum_uri_file_name, self._object))
    default_port = property(lambda self: _out(_library.lum_uri_default_port, self._object))

    def resolve(self, reference):
        """The URI that a reference leads to.

        >>> URI("http://h/a/b").resolve("../c?q")
        URI('http://h/c?q')
        """
        uri = self.copy()
        _check(_library.lum_uri_resolve(uri._object, *_in(reference)))
        return uri

    def relative_to(self, base, match_case=True):
        """The shortest reference that leads here from `base`.

        >>> URI("http://h/a/b/c?q").relative_to(URI("http://h/a/d"))
        URI('b/c?q')
        """
        uri = self.copy()
        _check(_library.lum_uri_make_relative(uri._object, base._object, int(match_case)))
        return uri

    def relation(self, other, match_case=True):
        """What this URI is to another.

        >>> URI("http://h/a/b").relation(URI("http://h:80/a")).name
        'CHILD'
        """
        relation = ctypes.c_int()
        _check(_library.lum_uri_relation(self._object, other._object, int(match_case), ctypes.byref(relation)))
        return Relation(relation.value)

    def common_parent(self, other, match_case=True):
        """The nearest directory at or above both."""
        return URI._of(_library.lum_uri_common_parent, self._object, other._object, int(match_case))

    def pairs(self):
        """The pairs of the query in order, repeated keys too."""
        cursor, sizes, capacity = _Size(), (_Size(), _Size()), 256
        while True:
            buffers = [ctypes.create_string_buffer(capacity) for _ in sizes]
            status = _library.lum_uri_next_pair(
                self._object, ctypes.byref(cursor), buffers[0], _Size(capacity), ctypes.byref(sizes[0]),
                buffers[1], _Size(capacity), ctypes.byref(sizes[1]))
            if status == NOT_FOUND:
                return
            if status == TRUNCATED:
                capacity = max(size.value for size in sizes) + 1
                continue
            _check(status)
            yield tuple(b.raw[: s.value].decode("utf-8", "surrogateescape") for b, s in zip(buffers, sizes))

    def get(self, key, default=None):
        data, status = _written(_library.lum_uri_query_value, self._object, *_in(key))
        if status == NOT_FOUND:
            return default
        _check(status)
        return data.decode("utf-8", "surrogateescape")

    def __getitem__(self, key):
        value = self.get(key)
        if value is None:
            raise KeyError(key)
        return value

    def __setitem__(self, key, value):
        _check(_library.lum_uri_set_query_value(self._object, *_in(key), *_in(value)))

    def local_path(self, style="native"):
        """The local path in one of PATH_STYLES; "" if there is none.

        >>> URI("file:///C|/a%20b").local_path("win")
        'C:\\\\a b'
        >>> URI.from_local_path("/tmp/a b", "unix")
        URI('file:///tmp/a%20b')
        """
        return _out(_library.lum_uri_to_path, self._object, PATH_STYLES.index(style))

    @staticmethod
    def from_local_path(path, style="native"):
        return URI._of(_library.lum_uri_from_path, *_in(path), PATH_STYLES.index(style))


def _component(index):
    return property(
        lambda self: _out(_library.lum_uri_get, self._object, index, _UNESCAPED),
        lambda self, text: _check(_library.lum_uri_set(self._object, index, _UNESCAPED, *_in(text))),
        doc=f"The {COMPONENTS[index]}, unescaped.")


for _index, _name in enumerate(COMPONENTS):
    setattr(URI, _name, _component(_index))


def explain(text):
    """Why a text is not a valid URI, and which bytes are at fault; None if it is valid.

    >>> explain("http://h/a\\\\b")
    ('backslash in the path', 10, 1)
    >>> explain("a/b")
    """
    offset, length = _Size(), _Size()
    status = _library.lum_uri_explain(*_in(text), ctypes.byref(offset), ctypes.byref(length))
    return None if status == OK else (_library.lum_status_text(status).decode(), offset.value, length.value)


def escape(text, for_query=False):
    """
    >>> escape("a b&c"), escape("a b&c", for_query=True), unescape("a%20b")
    ('a%20b&c', 'a%20b%26c', 'a b')
    """
    return _out(_library.lum_escape, *_in(text), int(for_query))


def unescape(text, for_query=False):
    return _out(_library.lum_unescape, *_in(text), int(for_query))


def convert(data, source, target):
    """Bytes from one encoding to another. The error of a text that stops has the offset at which.

    >>> convert(b"\\x83\\x5C", "shift_jis", "utf-8").decode()
    'ソ'
    >>> try:
    ...     convert("3 €".encode(), "utf-8", "iso-8859-1")
    ... except Error as error:
    ...     print(error, "at", error.offset)
    a character that the encoding does not have at 2
    """
    offset = _Size()
    result, status = _written(_library.lum_convert, *_in(data), _Text(source.encode()), _Text(target.encode()),
                              tail=(ctypes.byref(offset),))
    if status != OK:
        raise Error(status, offset.value)
    return result


def encodings():
    """The names of all encodings.

    >>> "shift_jis" in encodings()
    True
    """
    names = []
    while True:
        data, status = _written(_library.lum_encoding_name, _Size(len(names)))
        if status == NOT_FOUND:
            return names
        _check(status)
        names.append(data.decode())


def ticks_of(time):
    """The ticks of a datetime.

    >>> ticks_of(datetime.datetime(2008, 2, 29, 12, 30, 45, 500000))
    128487618455000000
    >>> time_text(128487618455000000)
    '2008-02-29T12:30:45Z'
    """
    fields = (ctypes.c_int * 7)(time.year, time.month, time.day, time.hour, time.minute, time.second,
                                time.microsecond * 10)
    ticks = ctypes.c_int64()
    _check(_library.lum_time_from_fields(fields, ctypes.byref(ticks)))
    return ticks.value


def time_text(ticks):
    return _out(_library.lum_time_text, ctypes.c_int64(ticks))
