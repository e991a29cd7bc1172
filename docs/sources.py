#!/usr/bin/env python3
"""Shows Doxygen what a reader of a source sees. No line is added, so that places stay.

Of a header, the comment at its head as the file's documentation, and the titles of its sections, "// ---- Setters ----",
with the text below them, as groups of members. Of a guide, the anchors of its headings, as sites that show Markdown have
them: "guide.md#queries".
"""
import pathlib
import re
import sys

path = pathlib.Path(sys.argv[1])


def anchor(file, title):
    slug = re.sub(r'[^\w\- ]', '', title.lower()).replace(' ', '-')
    return f'{pathlib.Path(file).stem.lower()}-{slug}'


def show_guide(text):
    is_code = False
    for number, line in enumerate(text.splitlines()):
        is_code ^= line.startswith('```')
        if number > 0 and not is_code and re.match('#+ ', line):
            line += f' {{#{anchor(path.name, line.lstrip("# "))}}}'
        elif not is_code:
            line = re.sub(r'\]\(([\w./]+\.md)#([\w-]+)\)', lambda m: f'](@ref {pathlib.Path(m[1]).stem.lower()}-{m[2]})', line)
        print(line)


def show_header(text):
    name = str(path)[str(path).rfind('Lum/'):]
    # The first sentence, without the name that it begins with.
    subject = re.match(r'// (?:[\w:]+: )?(.*?[.:;])(?:\s|$)', text.replace('\n//', ''), re.S)
    subject = subject[1][:1].upper() + subject[1][1:-1] + '.' if subject else ''
    state, in_group, in_class = 'head', False, False
    # Where a group ends at the latest: with its class, or with its namespace.
    ends = {True: r'};|protected:|private:', False: r'}  // namespace|#ifdef __cplusplus'}
    close = '/** @} */ '
    for number, line in enumerate(text.splitlines()):
        title = re.match(r' *(//|/\*) ---- (.*[^- ]) -+( \*/)?$', line)
        in_class = line.startswith(' ') if title else in_class
        if number == 0:
            line = f'/** @file {name}' + ('' if line.startswith('/*') else ' ' + line[3:])
            state = 'C head' if line.endswith(name) else 'head'
        elif state == 'head' and line.startswith('//'):
            line = line[3:]
        elif state == 'head':
            line, state = '*/ ' + line, ''
        elif title and title[1] == '//':
            line, state = f'{close * in_group}/** @name {title[2]}', 'title'
            in_group = False
        elif title:
            line, state = f'{close * in_group}/** @name {title[2]}' + (' */ /** @{ */' if title[3] else ''), 'C title'
            state, in_group = ('', True) if title[3] else (state, False)
        elif state == 'title' and re.match(r' *//(?!/)', line) and 'NOLINT' not in line:
            line = re.sub(r' *// ?', '', line, count=1)
        elif state == 'title':
            line, state, in_group = '*/ /** @{ */ ' + line, '', True
        elif state == 'C title' and line.endswith('*/'):
            line, state, in_group = line + ' /** @{ */', '', True
        elif re.match(ends[in_class], line):
            line, in_group = close * in_group + line, False
        print(re.sub(r'^/// See the head of this file', f'/// {subject} More in {name}', line))


if path.suffix == '.md':
    show_guide(path.read_text())
else:
    show_header(path.read_text())
