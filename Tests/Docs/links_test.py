"""Every link of the pages that does not lead to the web points to a file, and to a heading where it names one."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = [*(ROOT / name for name in ("README.md", "CONTRIBUTING.md", "SECURITY.md", "CHANGELOG.md")), *sorted((ROOT / "Docs").glob("*.md"))]
LINK = re.compile(r"\]\(([^)\s]+)\)")


def prose(page):
    """A page without its code."""
    text = page.read_text(encoding="utf-8")
    return re.sub(r"`[^`\n]*`", "", re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL))


def anchors(page):
    """The names that a page's headings get: lower case, hyphens for blanks, without punctuation."""
    text = re.sub(r"^```.*?^```$", "", page.read_text(encoding="utf-8"), flags=re.MULTILINE | re.DOTALL)
    headings = re.findall(r"^#+ +(.+?) *$", text, re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def fault(page, link):
    """What is wrong with a link; nothing where it is good."""
    target, _, anchor = link.partition("#")
    path = (page.parent / target).resolve() if target else page
    if not path.is_relative_to(ROOT) or not path.exists():
        return "no such file"
    if anchor and (path.suffix != ".md" or anchor not in anchors(path)):
        return "no such heading"
    return ""


def main():
    links = [(page, link) for page in PAGES for link in LINK.findall(prose(page)) if not re.match(r"\w+:", link)]
    faults = [f"{page.relative_to(ROOT)}: {link}: {what}" for page, link in links if (what := fault(page, link))]
    linked = {(page.parent / link.partition("#")[0]).resolve() for page, link in links}
    faults += [f"{page.relative_to(ROOT)}: no page leads here" for page in PAGES[1:] if page not in linked]
    if faults or not links:
        sys.exit("\n".join(faults) or "no links found")


if __name__ == "__main__":
    main()
