"""Builds the site: build.py SITE, from the project's folder. Fails on a dead link, on a page that the navigation lacks,
and on a rule without a page."""

import html
import json
import re
import shutil
import sys
from pathlib import Path

import links
from interface import FOLDERS, Interface
from page import HERE, Markdown, Page
from rules import ShippedRules

ROOT = HERE.parent.parent
DOCS = ROOT / "docs"
OTHERS = {"contributing": ROOT / "CONTRIBUTING.md", "changes": ROOT / "CHANGELOG.md"}


def address_of(file):
    """The address of a linked file, or nothing when the site does not have it."""
    for name, other in OTHERS.items():
        if file == other:
            return f"{name}.html"
    if file == ROOT / "README.md":
        return "index.html"
    if file.parent == DOCS and file.suffix == ".md":
        return f"{file.stem}.html"
    if file.parent == ROOT / "rules" / "help":
        return f"rules/{file.stem}.html"
    return ""


def read_navigation():
    sections = []
    for line in (HERE / "navigation.txt").read_text().splitlines():
        if line.startswith(" "):
            name, _, title = line.strip().partition(" ")
            sections[-1][1].append((name if title else f"{name}.html", title))
        elif line and not line.startswith("#"):
            sections.append((line, []))
    return sections


def navigation_of(page, sections, titles):
    parts = []
    current = {"rules": "rules/index.html", "interface": "interface/index.html"}.get(page.section, page.address)
    for section, entries in sections:
        inside = any(address == current for address, _ in entries)
        rows = []
        for address, title in entries:
            mark = ' aria-current="page"' if address == page.address else ' class="within"' if address == current else ""
            rows.append(f'<li><a href="{page.root()}{address}"{mark}>{html.escape(title or titles[address])}</a></li>')
            if address == current == "interface/index.html":
                rows += [f'<li class="deeper"><a href="{page.root()}{address}#{folder or "corvane"}">{name}</a></li>'
                         for folder, name in FOLDERS.items()]
        parts.append(f'<details{" open" if inside or section in ("Start", "Tutorials") else ""}><summary>{section}</summary>'
                     f'<ul>{"".join(rows)}</ul></details>')
    return "\n".join(parts)


def search_index(pages, interface):
    """What the search looks in: title, address, kind and text of each part of a page, and each name of the interface."""
    entries = []
    for page in pages:
        if page.section == "interface":
            continue
        kind = "rule" if page.section == "rules" else "page"
        for part in re.split(r"(?=<h[23] id=)", page.body):
            heading = re.match(r'<h[23] id="([^"]*)">(.*?)</h', part, re.S)
            words = " ".join(html.unescape(re.sub(r"<svg.*?</svg>|<[^>]*>", " ", part, flags=re.S)).split())
            title = page.title + (" › " + html.unescape(re.sub(r"<[^>]*>", "", heading[2])) if heading else "")
            entries.append([title, page.address + (f"#{heading[1]}" if heading else ""), kind, words])
    entries += [[name, address, "interface", interface.briefs.get(name, "")]
                for name, address in sorted(interface.symbols.items())]
    return "window.searchIndex = " + json.dumps(entries, ensure_ascii=False, separators=(",", ":")) + ";\n"


def unnamed_variables():
    """Variables of the environment that the code reads and the page of settings does not name."""
    page = (DOCS / "configuration.md").read_text()
    read = set()
    for folder in ("src", "modules", "tools"):
        for file in (ROOT / folder).rglob("*.cpp"):
            read |= set(re.findall(r'u"((?:CORVANE|QOR)_[A-Z_]+)"', file.read_text()))
    return sorted(name for name in read if f"`{name}`" not in page)


def main():
    site = Path(sys.argv[1]).resolve()
    shutil.rmtree(site, ignore_errors=True)
    site.mkdir(parents=True)
    interface = Interface(ROOT / "build" / "docs" / "interface")
    markdown = Markdown(address_of, interface.symbols)
    files = {file.stem: file for file in sorted(DOCS.glob("*.md"))} | OTHERS
    pages = [markdown.page(file, f"{name}.html") for name, file in files.items()]
    pages += ShippedRules(ROOT / "rules").pages(markdown)
    pages += interface.pages()

    sections = read_navigation()
    titles = {page.address: page.title for page in pages}
    listed = [address for _, entries in sections for address, _ in entries]
    missing = [f"{name}.html" for name in files if f"{name}.html" not in listed]
    unknown = [address for address in listed if address not in titles]
    if missing or unknown:
        sys.exit(f"the navigation lacks {missing} and names {unknown}, which are not there")
    for page in pages:
        page.write(site, navigation_of(page, sections, titles))
    (site / "search-index.js").write_text(search_index(pages, interface))
    for name in ("site.css", "site.js"):
        shutil.copyfile(HERE / name, site / name)
    wrong, outside = links.check(site)
    wrong += [f"docs/configuration.md does not name {name}" for name in unnamed_variables()]
    print(f"{len(pages)} pages; links that lead out of the site:", *outside, sep="\n  ")
    sys.exit("\n".join(wrong) if wrong else 0)


main()
