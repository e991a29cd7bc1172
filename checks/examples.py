#!/usr/bin/python3
"""Holds that every public name is documented, and that a program in examples/reference uses it.

The names are those of Doxygen's XML below build/docs; overloads count once. The uses are what clang finds in the
programs: a call, a type, a constant, a member that is read, resolved to its declaration, so that no comment and no name of
another class counts. Prints the names that are missing. Run `./dev docs` first, or let it run this.
"""
import pathlib
import sys
import xml.etree.ElementTree as xml

import clang.cindex as c

ROOT = pathlib.Path(__file__).resolve().parent.parent
# Read by programs of other kinds than these: what a header is made of, and the standard library's or a test's questions.
LEFT_OUT = ('Lum::Internal', 'Lum::Detail', 'std::', 'fmt::', 'LUM_API', 'LUM_HIDDEN', 'LUM_LIFETIMEBOUND')


def public_names():
    """The places of each public name's declarations, (file, line, name), and whether one of them is documented."""
    names = {}

    def add(scope, node, name, place=None):
        location = (node if place is None else place).find('location')
        full = f'{scope}::{name}' if scope else name
        if location is None or full.startswith(LEFT_OUT) or '@' in full or name.startswith('~') or name.endswith(' >'):
            return
        places, documented = names.setdefault(full, (set(), [False]))
        for kind in ('', 'decl'):
            file = location.get(kind + 'file', '').removeprefix('include/')
            if file.startswith('Lum/'):
                places.add(('include/' + file, int(location.get(kind + 'line')), name.split()[0]))
        documented[0] |= any((node.find(part) is not None and ''.join(node.find(part).itertext()).strip())
                             for part in ('briefdescription', 'detaileddescription'))

    folder = ROOT / 'build/docs/xml'
    for entry in xml.parse(folder / 'index.xml').getroot():
        if entry.get('kind') not in ('class', 'struct', 'file', 'namespace'):
            continue
        for compound in xml.parse(folder / (entry.get('refid') + '.xml')).getroot():
            is_class = compound.get('kind') in ('class', 'struct')
            scope = '' if compound.get('kind') == 'file' else compound.find('compoundname').text
            if is_class and compound.get('prot') == 'public' and '<' not in scope:
                add(scope.rpartition('::')[0], compound, scope.rpartition('::')[2])
            for member in compound.iter('memberdef'):
                deleted = (member.findtext('argsstring') or '').endswith('=delete')
                if member.get('prot') != 'public' or deleted or (is_class and '<' in scope):
                    continue
                name = member.findtext('name')
                if member.get('kind') == 'friend' and 'class' in (member.findtext('type') or ''):
                    continue
                # A constructor counts as its class.
                if is_class and name == scope.rpartition('::')[2]:
                    continue
                if not name.startswith('@') and name:
                    add(scope, member, name)
                for value in member.iter('enumvalue'):
                    # Doxygen gives no line for these, so they count as at the enumeration's.
                    add(scope, value, value.findtext('name'), member)
    return {name: found for name, found in names.items() if found[0]}


def used_places():
    used = set()
    for program in sorted((ROOT / 'examples/reference').glob('*.c*')):
        standard = ['-x', 'c', '-std=c99'] if program.suffix == '.c' else ['-std=c++20']
        if program.stem == 'bridges_qt':
            standard += ['-fPIC', *(f'-isystem{folder}' for folder in QT)]
        unit = c.Index.create().parse(str(program), [*standard, '-I', str(ROOT / 'include'), '-DLUM_EXAMPLES=""'],
                                      options=c.TranslationUnit.PARSE_DETAILED_PROCESSING_RECORD)
        for problem in unit.diagnostics:
            if problem.severity >= c.Diagnostic.Error:
                sys.exit(f'{program}: {problem}')
        for top in unit.cursor.get_children():
            if top.location.file and top.location.file.name == str(program):
                used |= {place for cursor in top.walk_preorder() for place in place_of(cursor)}
    return used


def place_of(cursor):
    target = cursor.referenced if cursor.kind != c.CursorKind.MACRO_INSTANTIATION else cursor.get_definition()
    if target is None or target.location.file is None:
        return
    template = c.conf.lib.clang_getSpecializedCursorTemplate(target)
    for declaration in (target, target.canonical, template and template.canonical):
        if declaration is None or declaration.location.file is None:
            continue
        path = pathlib.Path(declaration.location.file.name)
        if path.is_relative_to(ROOT):
            yield str(path.relative_to(ROOT)), declaration.location.line, (declaration.spelling or "?").split()[0]
            parent = declaration.semantic_parent
            if parent is not None and parent.kind == c.CursorKind.ENUM_DECL:
                for spelling in (declaration.spelling, parent.spelling):
                    yield str(path.relative_to(ROOT)), parent.location.line, spelling


QT = [f for f in pathlib.Path('/usr/include').glob('*/qt6') for f in (f, f / 'QtCore')]
used = used_places()
names = public_names()
failed = False
for name, (places, documented) in sorted(names.items()):
    is_shown = bool(places & used) or any(n.startswith(name + '::') and p & used for n, (p, _) in names.items())
    for fault in ([] if is_shown else ['no example']) + ([] if documented[0] else ['no documentation']):
        file, line, _ = min(places)
        print(f'{file}:{line}: {fault}: {name}')
        failed = True
if len(names) < 400:
    sys.exit(f'only {len(names)} names: where is the rest?')
print(f'{len(names)} public names' if not failed else 'examples/reference, or the header, lacks the above')
sys.exit(failed)
