#!/usr/bin/env python3
"""Every relative link of the pages in a folder leads to a file, and to a place inside it: check_links.py FOLDER"""

import html.parser
import pathlib
import sys
import urllib.parse


# Doxygen heads a page with links to its sections, and leaves a section out where all of it is private.
LEFT_OUT = ("nested-classes", "define-members")


class Page(html.parser.HTMLParser):
    """The links of a page and the places that can be linked to."""

    def __init__(self, path):
        super().__init__()
        self.links, self.places = [], set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        given = dict(attrs)
        self.places |= {given[name] for name in ("id", "name") if given.get(name)}
        self.links += [given[name] for name in ("href", "src") if given.get(name)]


def broken_links(folder):
    pages = {path.resolve(): Page(path) for path in sorted(folder.glob("**/*.html"))}
    for path, page in pages.items():
        for link in page.links:
            target = urllib.parse.urlsplit(link)
            if target.scheme or target.netloc:
                continue
            name = urllib.parse.unquote(target.path)
            file = (path.parent / name).resolve() if name else path
            fragment = urllib.parse.unquote(target.fragment)
            if fragment in LEFT_OUT:
                continue
            if not file.is_file() or fragment and file in pages and fragment not in pages[file].places:
                yield f"{path.name}: {link} leads nowhere"


def main():
    findings = sorted(set(broken_links(pathlib.Path(sys.argv[1]))))
    print("\n".join(findings[:50]), end="\n" if findings else "")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
