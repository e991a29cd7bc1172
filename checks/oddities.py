#!/usr/bin/env python3
"""Holds docs/oddities.json, its page and the answers in it together.

oddities.py page          writes docs/oddities.md
oddities.py ours LUM      the page is up to date, the tool's answers are Lum's, and `lum explain` names each oddity
oddities.py others        liburiparser's answers are RFC 3986's, and Node.js's are the WHATWG's
"""
import ctypes as c
import json
import pathlib
import subprocess
import sys

DOCS = pathlib.Path(__file__).resolve().parent.parent / 'docs'
ODDITIES = json.loads((DOCS / 'oddities.json').read_text())
PARTS = 'scheme user password host port path query fragment'.split()


def page():
    def cell(answer):
        return answer if answer == 'refused' else '<br>'.join(f'{k} `{v}`' for k, v in answer.items())

    rows = []
    for o in json.loads((DOCS / 'oddities.json').read_text().replace('|', '\\\\|')):
        text = f"`{o['input']}`" + (f" at `{o['base']}`" if 'base' in o else '')
        rows.append(f"| {o['id']} | {text} | {cell(o['lum'])} | {cell(o['rfc3986'])} | {cell(o['whatwg'])} | {o['says']} {o['why']} |\n")
    return ('# Where Lum reads a URI in its own way\n\n'
            'Made of docs/oddities.json by checks/oddities.py. The cells of RFC 3986 are what uriparser answers, those of the\n'
            'WHATWG what the URL class of Node.js does; `./dev check` asks both. `lum explain` names the rows that touch a text.\n\n'
            '| name | text | Lum | RFC 3986 | WHATWG | what differs, and why |\n|---|---|---|---|---|---|\n' + ''.join(rows))


def lum(tool, *arguments):
    return subprocess.run([tool, *arguments], capture_output=True, text=True).stdout.rstrip('\n')


def answer_of_lum(tool, o):
    text = lum(tool, 'resolve', o['base'], '--', o['input']) if 'base' in o else o['input']
    parsed = json.loads(lum(tool, 'parse', '--json', '--', text))
    parsed['path'] = parsed['path'] or parsed['nonHierarchical']
    return {k: parsed[k] for k in PARTS if parsed[k]} if parsed['valid'] else 'refused'


def is_named(tool, o):
    texts = [o['input']] + ([o['base']] if 'base' in o else [])
    return any(o['id'] == named['id'] for text in texts
               for named in json.loads(lum(tool, 'explain', '--json', '--', text))['oddities'])


class Range(c.Structure):
    _fields_ = [('first', c.c_void_p), ('after', c.c_void_p)]

    def text(self):
        return c.string_at(self.first, self.after - self.first).decode() if self.first else ''


class Segment(c.Structure):
    pass


Segment._fields_ = [('text', Range), ('next', c.POINTER(Segment)), ('reserved', c.c_void_p)]


class Uri(c.Structure):
    """UriUriA of uriparser 0.9."""
    _fields_ = [('scheme', Range), ('user', Range), ('host', Range), ('ip4', c.c_void_p), ('ip6', c.c_void_p),
                ('future', Range), ('port', Range), ('head', c.POINTER(Segment)), ('tail', c.POINTER(Segment)),
                ('query', Range), ('fragment', Range), ('absolute', c.c_int), ('owner', c.c_int),
                ('reserved', c.c_void_p)]


def answer_of_uriparser(o):
    library = c.CDLL('liburiparser.so.1')

    def parse(text):
        uri, end = Uri(), c.c_void_p()
        uri.kept = c.create_string_buffer(text.encode())
        return uri if library.uriParseSingleUriA(c.byref(uri), uri.kept, c.byref(end)) == 0 else None

    uri = parse(o['input'])
    if uri is None:
        return 'refused'
    if 'base' in o:
        base, reference, uri = parse(o['base']), uri, Uri()
        if library.uriAddBaseUriA(c.byref(uri), c.byref(reference), c.byref(base)) != 0:
            return 'refused'
    segments, at = [], uri.head
    while at:
        segments.append(at.contents.text.text())
        at = at.contents.next
    isRooted = uri.absolute or (uri.host.first and segments)
    user, _, password = uri.user.text().partition(':')
    values = (uri.scheme.text(), user, password, uri.host.text(), uri.port.text(),
              ('/' if isRooted else '') + '/'.join(segments), uri.query.text(), uri.fragment.text())
    return {k: v for k, v in zip(PARTS, values) if v}


def answer_of_node(o):
    script = """
        const [input, base] = JSON.parse(process.argv[1]);
        try {
            const u = new URL(input, base ?? undefined);
            console.log(JSON.stringify([u.protocol.slice(0, -1), u.username, u.password, u.hostname, u.port,
                                        u.pathname, u.search.slice(1), u.hash.slice(1)]));
        } catch (e) { console.log('"refused"'); }"""
    arguments = ['node', '-e', script, json.dumps([o['input'], o.get('base')])]
    values = json.loads(subprocess.run(arguments, capture_output=True, text=True, check=True).stdout)
    return values if values == 'refused' else {k: v for k, v in zip(PARTS, values) if v}


def main(arguments):
    if arguments[:1] == ['page']:
        (DOCS / 'oddities.md').write_text(page())
        return 0
    if arguments[:1] == ['ours'] and len(arguments) == 2:
        asked = [('lum', lambda o: answer_of_lum(arguments[1], o))]
    elif arguments == ['others']:
        asked = [('rfc3986', answer_of_uriparser), ('whatwg', answer_of_node)]
    else:
        print(__doc__)
        return 2
    faults = [f"{o['id']}: {name} says {o[name]}, but the answer is {answer}"
              for o in ODDITIES for name, ask in asked if (answer := ask(o)) != o[name]]
    if arguments[0] == 'ours':
        faults += [f"{o['id']}: lum explain does not name it" for o in ODDITIES if not is_named(arguments[1], o)]
        if (DOCS / 'oddities.md').read_text() != page():
            faults.append('docs/oddities.md is not up to date: checks/oddities.py page')
    print('\n'.join(faults), end='\n' if faults else '')
    return 1 if faults else 0


sys.exit(main(sys.argv[1:]))
