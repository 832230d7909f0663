"""Finds dead links: each address in each page leads to a file of the site and, with an anchor, to an element of it."""

from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote


class Reader(HTMLParser):
    def __init__(self):
        super().__init__()
        self.anchors, self.links, self.repeated = set(), [], set()

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        own = {values.get("id"), values.get("name") if tag == "a" else None} - {None}
        self.repeated |= own & self.anchors
        self.anchors |= own
        self.links += [values[name] for name in ("href", "src") if values.get(name) is not None]


def check(site):
    """What is wrong, a line for each; and the links that lead out of the site."""
    pages = {}
    for file in sorted(site.rglob("*.html")):
        pages[file] = Reader()
        pages[file].feed(file.read_text())
    wrong, outside = [], set()
    for file, page in pages.items():
        # Doxygen repeats the anchor of an operation that a derived class refuses too.
        if file.parent.name != "interface":
            wrong += [f"{file.relative_to(site)}: two elements have the anchor {one}" for one in sorted(page.repeated)]
        for link in page.links:
            if link.startswith(("http://", "https://", "mailto:")):
                outside.add(link)
                continue
            path, _, anchor = unquote(link).partition("#")
            target = (file.parent / path).resolve() if path else file
            if not target.is_relative_to(site) or not target.is_file():
                wrong.append(f"{file.relative_to(site)}: there is no {link}")
            elif anchor and target in pages and anchor not in pages[target].anchors:
                wrong.append(f"{file.relative_to(site)}: {link} leads to no element")
    return wrong, sorted(outside)


if __name__ == "__main__":
    import sys
    site = Path(sys.argv[1]).resolve()
    problems = check(site)[0] if (site / "index.html").is_file() else [f"there is no {site}/index.html"]
    sys.exit("\n".join(problems) or 0)
