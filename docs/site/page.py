"""A page of the site: the frame that all pages share, and the HTML of a Markdown page."""

import html
import re
from pathlib import Path

from markdown_it import MarkdownIt
from pygments import highlight
from pygments.formatters import HtmlFormatter
from pygments.lexers import get_lexer_by_name
from pygments.util import ClassNotFound

HERE = Path(__file__).parent
FRAME = (HERE / "frame.html").read_text()


class Page:
    """One page: its address from the site's folder, its title, its body and its headings."""

    def __init__(self, address, title, body, headings=(), section=""):
        self.address, self.title, self.body = address, title, body
        self.headings = list(headings)  # of the second and third level: level, anchor, text
        self.section = section  # of the navigation, for a page that has no entry there

    def root(self):
        return "../" * self.address.count("/")

    def write(self, site, navigation):
        contents = "".join(
            f'<li class="level{level}"><a href="#{anchor}">{html.escape(text)}</a></li>'
            for level, anchor, text in self.headings)
        if contents:
            contents = f"<h2>On this page</h2><ul>{contents}</ul>"
        values = {"TITLE": html.escape(self.title), "ROOT": self.root(), "NAVIGATION": navigation,
                  "CONTENTS": contents, "BODY": self.body}
        file = site / self.address
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(re.sub(r"@([A-Z]+)@", lambda match: values[match[1]], FRAME))


def plain(token):
    return "".join(child.content for child in token.children if child.type in ("text", "code_inline"))


def anchor_of(text, taken):
    """As code hosts make it, so that a link to a heading is right there and here."""
    anchor = re.sub(r"[^\w\- ]", "", text.lower()).replace(" ", "-")
    number = taken.get(anchor, 0)
    taken[anchor] = number + 1
    return f"{anchor}-{number}" if number else anchor


def coloured(code, language):
    if language:
        try:
            lexer = get_lexer_by_name(language, stripnl=False)
            return highlight(code, lexer, HtmlFormatter(nowrap=True))
        except ClassNotFound:
            pass
    return html.escape(code)


class Markdown:
    """Makes pages of Markdown. `address_of` leads from a linked file to an address of the site, `symbols` from a name
    of the interface to its page."""

    def __init__(self, address_of, symbols):
        self.address_of, self.symbols = address_of, symbols
        self.parser = MarkdownIt("commonmark").enable("table")

    def page(self, file, address, section=""):
        tokens = self.parser.parse(file.read_text())
        title, headings, taken = file.stem, [], {}
        root = "../" * address.count("/")
        for index, token in enumerate(tokens):
            if token.type == "heading_open":
                text = plain(tokens[index + 1])
                anchor = anchor_of(text, taken)
                token.attrSet("id", anchor)
                level = int(token.tag[1])
                if level == 1:
                    title = text
                elif level < 4:
                    headings.append((level, anchor, text))
            elif token.type == "inline":
                self.link(token, file, root)
            elif token.type == "html_block":
                token.content = self.caption(token.content)
            elif token.type == "fence":
                self.fence(token)
            elif token.type == "table_open":
                token.attrSet("class", "prose")
        return Page(address, title, self.parser.renderer.render(tokens, self.parser.options, {}), headings, section)

    @staticmethod
    def caption(comment):
        """The comment before a block names the file that it shows."""
        match = re.match(r"<!-- (?:file )?([^ :]+) -->", comment)
        return f'<p class="caption">{html.escape(match[1])}</p>\n' if match else ""

    def fence(self, token):
        language = token.info.strip()
        kind = "console" if not language and token.content.startswith("$ ") else language
        token.type, token.tag = "html_block", ""
        token.content = f'<pre class="code"><code>{coloured(token.content, kind)}</code></pre>\n'

    def link(self, inline, file, root):
        inside = False
        for child in inline.children:
            if child.type == "link_open":
                inside = True
                child.attrSet("href", self.target(child.attrGet("href"), file, root))
            elif child.type == "link_close":
                inside = False
            elif child.type == "image" and child.attrGet("src").endswith(".svg"):
                picture = (file.parent / child.attrGet("src")).read_text()
                child.type, child.content = "html_inline", picture[picture.index("<svg"):]
            elif child.type == "code_inline" and not inside:
                address = self.symbols.get(re.sub(r"\(\)$", "", child.content))
                if address:
                    child.type = "html_inline"
                    child.content = f'<a href="{root}{address}"><code>{html.escape(child.content)}</code></a>'

    def target(self, href, file, root):
        if re.match(r"[a-z]+:|#", href):
            return href
        path, mark, anchor = href.partition("#")
        address = self.address_of((file.parent / path).resolve())
        return root + address + mark + anchor if address else href
