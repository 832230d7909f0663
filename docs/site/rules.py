"""The pages of the rules that ship: the help page of each, with what its definition says, and a list by process."""

import html
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from page import Page

SEVERITIES = {"1": "critical", "2": "major", "3": "minor", "4": "info"}


class ShippedRules:
    def __init__(self, folder):
        self.folder = folder
        index = ElementTree.parse(folder / "scripts" / "UserDefinedFile.xml").getroot()
        self.definitions = {rule.get("Name"): rule for rule in index.findall("Rule")}
        self.sets = {}  # by the name of the process: title, [(rule, severity)]
        for file in sorted(folder.glob("*.xml")):
            root = ElementTree.parse(file).getroot()
            rules = [(rule.get("Name"), rule.get("Severity")) for rule in root.findall("Rule")]
            self.sets[file.stem] = (root.get("Title"), rules)

    def stem(self, name):
        return Path(self.definitions[name].get("Module")).stem

    def pages(self, markdown):
        """All pages; raises when a rule has no page, or a page no rule."""
        files = {file.stem for file in (self.folder / "help").glob("*.md")}
        named = {self.stem(name) for name in self.definitions}
        used = {name for _, rules in self.sets.values() for name, _ in rules}
        if files != named or used != set(self.definitions):
            raise SystemExit(f"rules without a page, a set or a definition: {files ^ named} {used ^ set(self.definitions)}")
        return [self.overview()] + [self.page(name, markdown) for name in self.definitions]

    def page(self, name, markdown):
        page = markdown.page(self.folder / "help" / f"{self.stem(name)}.md", f"rules/{self.stem(name)}.html", "rules")
        rows = []
        for process, (_, rules) in self.sets.items():
            for rule, severity in rules:
                if rule == name:
                    rows.append(f'<tr><td><a href="index.html#{process}">{process}</a></td>'
                                f"<td>{SEVERITIES.get(severity, severity)}</td></tr>")
        definition = self.definitions[name]
        page.body += (
            '<h2 id="in-force">Where it is in force</h2>\n'
            '<table class="prose"><thead><tr><th>process</th><th>severity</th></tr></thead>'
            f'<tbody>{"".join(rows)}</tbody></table>\n'
            f"<p>Its category is {html.escape(definition.get('CategoryText'))}, its script "
            f"<code>{html.escape(definition.get('File'))}</code>. "
            '<a href="../shipped-rules.html#other-limits-severities-and-rules">Change its limit or severity</a></p>\n')
        page.headings.append((2, "in-force", "Where it is in force"))
        return page

    def overview(self):
        body = ["<h1>Every rule, by process</h1>\n"
                f"<p>{len(self.definitions)} rules ship, in {len(self.sets)} sets. Each page says why the rule is there, "
                "how it measures, and where its limit comes from. "
                '<a href="../shipped-rules.html">The rules that ship</a> tells how to run and to change them.</p>\n']
        headings = []
        for process, (title, rules) in self.sets.items():
            headings.append((2, process, process))
            body.append(f'<h2 id="{process}">{process}</h2>\n<p>For {html.escape(title)}.</p>\n'
                        '<table class="prose"><thead><tr><th>rule</th><th>severity</th><th>what it asks for</th></tr>'
                        "</thead><tbody>")
            for name, severity in rules:
                body.append(f'<tr><td><a href="{self.stem(name)}.html">{html.escape(name)}</a></td>'
                            f"<td>{SEVERITIES.get(severity, severity)}</td>"
                            f"<td>{html.escape(self.definitions[name].get('Description'))}</td></tr>")
            body.append("</tbody></table>\n")
        return Page("rules/index.html", "Every rule, by process", "".join(body), headings)
