#!/usr/bin/env python3
"""Says which links of a folder of HTML pages lead to no file in it, or to no place in that file."""
import html.parser
import pathlib
import sys
import urllib.parse

ROOT = pathlib.Path(sys.argv[1]).resolve()


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.names, self.links = set(), []
        self.feed(path.read_text(encoding='utf-8'))

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.names |= {values.get('id'), values.get('name') if tag == 'a' else None}
        self.links += [values[key] for key in ('href', 'src', 'data') if values.get(key)]


pages = {path: Page(path) for path in ROOT.glob('**/*.html')}
count, failed = 0, False
for path, page in sorted(pages.items()):
    for link in page.links:
        target = urllib.parse.urlsplit(link)
        if target.scheme or target.netloc:
            continue
        count += 1
        file = (path.parent / urllib.parse.unquote(target.path)).resolve() if target.path else path
        place = urllib.parse.unquote(target.fragment)
        if not file.is_file() or (place and file in pages and place not in pages[file].names):
            print(f'{path.relative_to(ROOT)}: {link} leads nowhere')
            failed = True
if count < 1000:
    sys.exit(f'only {count} links: where is the site?')
sys.exit(failed)
