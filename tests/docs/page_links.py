"""Links of a page to files and headings."""

import re


def without_blocks(text):
    return re.sub(r"^```.*?^```$", "", text, flags=re.M | re.S)


def anchor_of(heading):
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def anchors(page):
    return set(map(anchor_of, re.findall(r"^#+ (.+)$", without_blocks(page.read_text("utf-8")), re.M)))


def relative_links(page):
    """For each link that is no web address: its text, the file it leads to, and the anchor or an empty text."""
    for target in re.findall(r"\]\(([^)\s]+)\)", without_blocks(page.read_text("utf-8"))):
        if not re.match(r"\w+:", target):
            path, _, anchor = target.partition("#")
            yield target, (page.parent / path).resolve() if path else page, anchor


def problem_of(file, anchor):
    """What is wrong with a link to an anchor of a file, or None."""
    if not file.exists():
        return "there is no such file"
    if anchor and anchor not in anchors(file):
        return "there is no such heading"
    return None
