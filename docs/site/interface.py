"""The pages of the interface: what Doxygen made of the public headers, in the site's frame, and an overview."""

import html
import re
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from page import Page

# What Doxygen lists on pages of its own stays out: overview, navigation and search have it.
LISTS = re.compile(r"(annotated|classes|files|index|hierarchy|inherits|pages|deprecated|functions.*|globals.*|"
                   r"namespaces|namespacemembers.*|dir_.*|.*-members|graph_legend|doxygen_crawl)\.html$")

KIND = re.compile(r" (Class|Struct|Union|Namespace|File)(?: Template)? Reference")

FOLDERS = {
    "": "What a rule module includes",
    "rules": "Rules, parameters, constraints",
    "scriptrules": "Script rules and their host",
    "host": "Runs, findings, rule modules",
    "xml": "Rule files as XML",
    "dfx": "Typed data between modules",
    "database": "Rule database",
    "part": "CAD parts",
    "app": "Application, language, help, batch mode",
    "config": "Settings and data folders",
    "logging": "Run log",
    "units": "Units",
    "text": "Text",
    "platform": "Components, windows, registry",
    "base": "Types and platform",
}


def header_of(compound):
    """The header as it is included. Doxygen gives its whole path, without the first slash."""
    path = "/" + compound.findtext("path").strip("/") + "/" + compound.findtext("name")
    return Path(path).relative_to(Path("include").resolve()).as_posix()


def page_of(compound):
    return compound.findtext("filename").removesuffix(".html") + ".html"


def brief_of(compound):
    return " ".join("".join(compound.find("briefdescription").itertext()).split())


class Interface:
    def __init__(self, folder):
        self.folder = folder
        self.tags = ElementTree.parse(folder / "tags.xml").getroot()
        self.briefs = {}
        for file in (folder / "xml").glob("*.xml"):
            for compound in ElementTree.parse(file).getroot().findall("compounddef"):
                self.briefs[compound.findtext("compoundname")] = brief_of(compound)
        self.symbols = self.index()

    def index(self):
        """From each name of the interface to its address. A name that is there twice leads nowhere."""
        found = {}

        def add(name, address):
            found[name] = "" if found.get(name, address) != address else address

        for compound in self.tags.findall("compound"):
            name, kind = compound.findtext("name"), compound.get("kind")
            page = "interface/" + page_of(compound)
            if kind == "file":
                add(header_of(compound), page)
            else:
                add(name, page)
                if "<" not in name:
                    add(name.split("::")[-1], page)
            for member in compound.findall("member"):
                address = f"interface/{member.findtext('anchorfile')}#{member.findtext('anchor')}"
                if kind == "file":
                    add(member.findtext("name"), address)
                else:
                    found.setdefault(f"{name}::{member.findtext('name')}", address)
        return {name: address for name, address in found.items() if address}

    def headers(self):
        """By folder: the headers with their pages and classes."""
        folders = {folder: [] for folder in FOLDERS}
        for compound in self.tags.findall("compound[@kind='file']"):
            folders["/".join(header_of(compound).split("/")[1:-1])].append(compound)
        return folders

    def overview(self):
        body = ["<h1>The interface</h1>\n<p>The public headers, by folder of <code>include/corvane</code>. What is here is "
                'promised. <a href="../ownership.html">Ownership and threads</a> says for all of them who deletes what and '
                "which objects threads may share.</p>\n"]
        headings = []
        for folder, compounds in self.headers().items():
            anchor = folder or "corvane"
            headings.append((2, anchor, FOLDERS[folder]))
            body.append(f'<h2 id="{anchor}">{FOLDERS[folder]}</h2>\n<table class="prose"><tbody>')
            for compound in sorted(compounds, key=lambda one: one.findtext("name").lower()):
                body.append(f'<tr><td><a href="{page_of(compound)}">'
                            f"<code>{header_of(compound)}</code></a></td>"
                            f"<td>{self.classes(compound)}</td></tr>")
            body.append("</tbody></table>\n")
        return Page("interface/index.html", "The interface", "".join(body), headings)

    def classes(self, compound):
        lines = []
        for one in compound.findall("class"):
            name = one.text
            address = self.symbols.get(name, "").removeprefix("interface/")
            brief = html.escape(self.briefs.get(name, ""))
            if address:
                lines.append(f'<a href="{address}"><code>{html.escape(name)}</code></a>{": " if brief else ""}{brief}')
        names = sorted({one.findtext("name") for one in compound.findall("member")})
        if names and not lines:
            lines.append(", ".join(f"<code>{html.escape(name)}</code>" for name in names[:12])
                         + (" and more" if len(names) > 12 else ""))
        return "<br>".join(lines)

    def pages(self):
        made = {file.name for file in (self.folder / "html").glob("*.html") if not LISTS.match(file.name)}
        return [self.overview()] + [self.page(self.folder / "html" / name, made) for name in sorted(made)]

    def page(self, file, made):
        text = file.read_text()
        title = html.unescape(re.search(r'data-title="([^"]*)"', text)[1])
        title = KIND.sub("", title.removeprefix("Corvane Framework: "))
        body = re.sub(r"<!--.*?-->", "", text[text.index("<article"):text.index("</article>")], flags=re.S)
        body = re.sub(r'<script.*?</script>|<div id="nav-path".*?</div>', "", body, flags=re.S)
        body = re.sub(r'<div class="summary">.*?</div>', "", body, count=1, flags=re.S)
        body = re.sub(r'<a class="[^"]*" href="dir_[^"]*">(.*?)</a>', r"\1", body)
        # Rows of what a class inherits fold by a script of Doxygen's; here they are open.
        body = re.sub(r' onclick="[^"]*"|<img src="closed.png"[^>]*>', "", body)
        body = body.replace('<div class="title">', '<h1 class="title">', 1)
        body = re.sub(r'(<h1 class="title">.*?)</div>',
                      lambda match: KIND.sub(lambda kind: f' <span class="mlabel">{kind[1].lower()}</span>', match[1]) + "</h1>",
                      body, count=1, flags=re.S)
        body = re.sub(r'<a href="([^"#]*)">More...</a>|<a href="([^"]*)">More...</a>', self.more(made), body)
        return Page("interface/" + file.name, title, re.sub(r"^<article[^>]*>", "", body.strip()), [], "interface")

    @staticmethod
    def more(made):
        def link(match):
            address = match[1] or match[2]
            return f'<a href="{address}">more</a>' if address.split("#")[0] in made or address[0] == "#" else ""
        return link
