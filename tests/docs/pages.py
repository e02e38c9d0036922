"""Reads Markdown pages: what they quote, which commands they show and what they link to."""

import dataclasses
import pathlib

from markdown_it import MarkdownIt

PROJECT = pathlib.Path(__file__).resolve().parents[2]
README = PROJECT / "README.md"
CONTRIBUTING = PROJECT / "CONTRIBUTING.md"
GUIDE = sorted((PROJECT / "docs").glob("*.md"))
ALL = [README, CONTRIBUTING, *GUIDE]


@dataclasses.dataclass(frozen=True)
class Fence:
    """A block of code; `line` is that of its first line of text, from 1."""
    language: str
    text: str
    line: int


def _tokens(page):
    return MarkdownIt("commonmark").enable("table").parse(page.read_text())


def fences(page):
    for token in _tokens(page):
        if token.type == "fence":
            yield Fence(token.info.strip(), token.content, token.map[0] + 2)
        elif token.type == "code_block":
            yield Fence("", token.content, token.map[0] + 1)


def _inline(page, kind):
    for token in _tokens(page):
        for child in token.children or ():
            if child.type == kind:
                yield child


def images(page):
    return [image.attrGet("src") for image in _inline(page, "image")]


def code_spans(page):
    return [span.content for span in _inline(page, "code_inline")]


def links(page):
    return [link.attrGet("href") for link in _inline(page, "link_open")]


def broken_links(page):
    """Links whose text goes over the end of a line, of which Doxygen makes something else."""
    for token in _tokens(page):
        inside = None
        for child in token.children or ():
            if child.type == "link_open":
                inside = child.attrGet("href")
            elif child.type == "link_close":
                inside = None
            elif child.type == "softbreak" and inside is not None:
                yield inside


def name(page):
    return page.relative_to(PROJECT) if page.is_relative_to(PROJECT) else page
