#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Says, with file and line, what is wrong with the guide as it was built.

    check_html.py FOLDER SOURCES

A page has one h1 and headings that skip no level, elements of HTML 5 and MathML only,
each closed where it must be, names (id) that are there once, an alternative text for
each picture, and as many blocks of code as its source in Markdown. Every link and picture leads to something in the folder, every page can be
reached from index.html, and no Markdown or mathematics is left unread. Where the
program tidy is at hand, it must have no complaint either.
"""
import shutil
import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path

VOID = {"meta", "link", "img", "br", "hr", "col"}
HTML = VOID | set(
    "html head title body main nav h1 h2 h3 p a em strong code pre ul ol li table colgroup thead "
    "tbody tr th td figure figcaption span div".split()
)
MATHML = set(
    "math semantics annotation mrow mi mn mo mfrac msup msub msubsup mtext mspace mover munder "
    "msqrt mstyle mtable mtr mtd mpadded".split()
)
UNREAD = ("$$", "\\frac", "```", "](", "<!--")


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.blocks = 0
        self.faults, self.open, self.ids, self.links, self.headings = [], [], [], [], []
        self.path = path
        self.feed(path.read_text(encoding="utf-8"))
        self.close()
        for tag in self.open:
            self.fault(f"<{tag}> is not closed")
        if self.headings.count(1) != 1:
            self.fault("not exactly one h1")
        for before, after in zip(self.headings, self.headings[1:]):
            if after > before + 1:
                self.fault(f"h{after} behind h{before}")
        for name in {i for i in self.ids if self.ids.count(i) > 1}:
            self.fault(f"id {name} twice")

    def fault(self, what):
        self.faults.append(f"{self.path}:{self.getpos()[0]}: {what}")

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag not in HTML | MATHML:
            self.fault(f"<{tag}> is none of the guide's elements")
        if tag not in VOID:
            self.open.append(tag)
        if tag in ("h1", "h2", "h3"):
            self.headings.append(int(tag[1]))
        self.blocks += tag == "pre"
        if tag == "html" and not attributes.get("lang"):
            self.fault("no language")
        if "id" in attributes:
            self.ids.append(attributes["id"])
        if tag == "img" and not attributes.get("alt"):
            self.fault("a picture without words")
        for name in ("href", "src"):
            if name in attributes:
                self.links.append((self.getpos()[0], attributes[name]))

    def handle_startendtag(self, tag, attributes):
        self.handle_starttag(tag, attributes)
        if tag not in VOID:
            self.open.pop()

    def handle_endtag(self, tag):
        if not self.open or self.open[-1] != tag:
            self.fault(f"</{tag}> closes what is not open")
        else:
            self.open.pop()

    def handle_data(self, data):
        if "annotation" in self.open or "code" in self.open:
            return
        for mark in UNREAD:
            if mark in data:
                self.fault(f"unread: {mark}")


def main(folder, sources):
    pages = {path.name: Page(path) for path in sorted(folder.glob("*.html"))}
    faults = [fault for page in pages.values() for fault in page.faults]
    for name, page in pages.items():
        lines = (sources / name).with_suffix(".md").read_text(encoding="utf-8").splitlines()
        if page.blocks * 2 != sum(line.startswith("```") for line in lines):
            faults.append(f"{folder / name}: not as many blocks as in its source")
    reached, waiting = set(), ["index.html"]
    while waiting:
        name = waiting.pop()
        if name in reached or name not in pages:
            continue
        reached.add(name)
        for line, link in pages[name].links:
            target, _, anchor = link.partition("#")
            target = target or name
            if not (folder / target).is_file():
                faults.append(f"{folder / name}:{line}: leads nowhere: {link}")
            elif anchor and anchor not in pages[target].ids:
                faults.append(f"{folder / name}:{line}: no such place: {link}")
            waiting.append(target)
    faults += [f"{folder / name}: not reached from index.html" for name in pages.keys() - reached]
    if not pages:
        faults.append(f"{folder}: no page")
    if shutil.which("tidy"):
        for name in pages:
            said = subprocess.run(
                ["tidy", "-quiet", "-errors", "-utf8", str(folder / name)],
                capture_output=True, text=True, check=False)
            faults += [f"{folder / name}: {line}" for line in said.stderr.splitlines()]
    print("\n".join(faults) or f"{len(pages)} pages, every link leads somewhere")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2])))
