#!/usr/bin/env python3
"""Builds the HTML function reference of the package from docs/functions.md: one page per
level-2 section (each function, and the topics Errors, Paths, Encodings, ...), the emulated
host's pages and the release notes, an index, and a search that works from the file system
(the search data is a generated script loaded by a <script> tag: browsers refuse fetch() of
file:// pages). Markdown becomes HTML through cmark-gfm; this script only splits the Markdown at
its "## " headings, gives headings their GitHub anchors, points links at the page that holds
their target and adds the navigation.
Usage: doc_pages.py --root REPO --out FOLDER"""
import argparse
import html
import json
import os
import re
import subprocess
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import version_file  # noqa: E402

CHECKED_LANGUAGE = "fmcalc-checked"
FUNCTION_HEADING = re.compile(r"^(VFile_[A-Za-z]+)")


def cmark(markdown):
    run = subprocess.run(["cmark-gfm", "-e", "table", "-e", "autolink", "-e", "strikethrough"],
                         input=markdown.encode("utf-8"), stdout=subprocess.PIPE, check=True)
    return run.stdout.decode("utf-8")


def plain(fragment):
    return html.unescape(re.sub(r"<[^>]+>", "", fragment))


def github_slug(text):
    slug = re.sub(r"[^\w\- ]", "", text.strip().lower())
    return slug.replace(" ", "-")


class Page:
    def __init__(self, file, title, markdown, kind):
        self.file, self.title, self.markdown, self.kind = file, title, markdown, kind
        self.body = ""
        self.anchors = []  # (anchor, heading text, level)
        match = FUNCTION_HEADING.match(title)
        self.function = match.group(1) if match and kind == "function" else None


def split_reference(markdown):
    """The preamble (before the first "## ") and one (title, markdown) per level-2 section.
    Headings inside fenced code blocks are not headings."""
    preamble, sections, current, fenced = [], [], None, False
    for line in markdown.splitlines(keepends=True):
        if line.startswith("```"):
            fenced = not fenced
        if not fenced and line.startswith("## "):
            current = [line[3:].strip(), [line]]
            sections.append(current)
        elif current is None:
            preamble.append(line)
        else:
            current[1].append(line)
    return "".join(preamble), [(title, "".join(lines)) for title, lines in sections]


def drop_rules_and_contents(markdown):
    """Without thematic breaks and the hand-kept table of contents (the index lists the pages)."""
    kept = [line for line in markdown.splitlines(keepends=True)
            if line.strip() != "---" and not re.match(r"^- \[[^\]]*\]\(#[^)]*\)\s*$", line)]
    return "".join(kept)


def add_heading_ids(page, used):
    def replace(match):
        level, inner = match.group(1), match.group(2)
        text = plain(inner)
        slug = base = github_slug(text)
        n = 0
        while slug in used:
            n += 1
            slug = f"{base}-{n}"
        used.add(slug)
        page.anchors.append((slug, text, int(level)))
        return f'<h{level} id="{slug}">{inner}</h{level}>'

    page.body = re.sub(r"<h([1-4])>(.*?)</h\1>", replace, page.body, flags=re.S)


def loose(anchor):
    return re.sub(r"-+", "-", anchor).strip("-")


def rewrite_links(page, where, markdown_pages):
    """#anchor -> the page that holds it; name.md -> name.html for the pages made here."""
    missing = []

    def replace(match):
        target = html.unescape(match.group(1))
        if target.startswith("#"):
            anchor = target[1:]
            found = where.get(anchor) or where.get("~" + loose(anchor))
            if not found:
                missing.append(target)
                return match.group(0)
            file, exact = found
            if file == page.file:
                return f'href="#{exact}"'
            top = any(p.file == file and p.anchors and p.anchors[0][0] == exact
                      for p in markdown_pages)
            return f'href="{file}"' if top else f'href="{file}#{exact}"'
        md = re.fullmatch(r"(?:\./)?([\w-]+)\.md(#.*)?", target)
        if md and md.group(1) + ".html" in {p.file for p in markdown_pages}:
            return f'href="{md.group(1)}.html{md.group(2) or ""}"'
        return match.group(0)

    page.body = re.sub(r'href="([^"]*)"', replace, page.body)
    return missing


def mark_checked_examples(page):
    caption = ('<figcaption>Checked example: the test suite runs these calculations in an empty '
               'folder, in this order, and compares each result with the one after '
               '<code>//</code>.</figcaption>')
    page.body, count = re.subn(
        rf'<pre><code class="language-{CHECKED_LANGUAGE}">(.*?)</code></pre>',
        lambda m: f'<figure class="checked-example">{caption}<pre><code>{m.group(1)}</code></pre>'
                  '</figure>',
        page.body, flags=re.S)
    return count


def section_text(page):
    """(anchor, heading, plain text) per heading of the page, for the search."""
    parts = re.split(r'(<h[1-4] id="[^"]*">.*?</h[1-4]>)', page.body, flags=re.S)
    entries, current = [], None
    for part in parts:
        heading = re.match(r'<h[1-4] id="([^"]*)">(.*?)</h[1-4]>', part, flags=re.S)
        if heading:
            current = [heading.group(1), plain(heading.group(2)), ""]
            entries.append(current)
        elif current is not None:
            current[2] += plain(part)
    return [(a, h, re.sub(r"\s+", " ", t).strip()) for a, h, t in entries]


def navigation(pages, current):
    groups = [("Functions", "function"), ("Topics", "topic"), ("More", "more")]
    out = ['<nav class="pages">']
    for label, kind in groups:
        out.append(f"<h2>{label}</h2><ul>")
        for p in pages:
            if p.kind == kind:
                mark = ' aria-current="page"' if p is current else ""
                out.append(f'<li><a href="{p.file}"{mark}>{html.escape(p.title)}</a></li>')
        out.append("</ul>")
    out.append("</nav>")
    return "\n".join(out)


def document(title, short, body, nav):
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{html.escape(title)} — Vantafile {short}</title>
<link rel="stylesheet" href="style.css">
<script src="search-index.js"></script>
<script src="search.js" defer></script>
</head>
<body>
<header class="top">
<a class="home" href="index.html">Quorvel Vantafile Plug-In {short} — reference</a>
<div class="search"><input type="search" id="search" placeholder="Search functions, selectors, codes, messages" aria-label="Search the reference" autocomplete="off">
<ol id="results" hidden></ol></div>
</header>
<div class="layout">
{nav}
<main>
{body}
</main>
</div>
</body>
</html>
"""


def pager(pages, index):
    links = []
    if index > 0:
        links.append(f'<a rel="prev" href="{pages[index - 1].file}">← {html.escape(pages[index - 1].title)}</a>')
    if index + 1 < len(pages):
        links.append(f'<a rel="next" href="{pages[index + 1].file}">{html.escape(pages[index + 1].title)} →</a>')
    return '<p class="pager">' + " ".join(links) + "</p>"


def prototype(page):
    code = re.search(r"<pre><code>(.*?)</code></pre>", page.body, flags=re.S)
    if not code:
        return ""
    first = plain(code.group(1)).strip().splitlines()[0]
    return first if first.startswith(page.function or "\0") else ""


def build(root, out):
    version = version_file.read(root)
    with open(os.path.join(root, "docs", "functions.md"), encoding="utf-8") as f:
        preamble, sections = split_reference(f.read())

    pages, seen = [], set()
    for title, markdown in sections:
        match = FUNCTION_HEADING.match(title)
        # The first section of each function is its page; further ones (VFile_Get's selector
        # families, the picture copy) sit among the topics.
        kind = "function" if match and match.group(1) not in seen else "topic"
        if kind == "function":
            seen.add(match.group(1))
        pages.append(Page(loose(github_slug(title)) + ".html", title, markdown, kind))
    extra = [("host.md", "host.html", "The emulated host: fmhost"),
             ("host-language.md", "host-language.html", "fmhost's calculation language")]
    for source, file, title in extra:
        with open(os.path.join(root, "docs", source), encoding="utf-8") as f:
            pages.append(Page(file, title, f.read(), "more"))
    with open(os.path.join(root, "CHANGELOG.md"), encoding="utf-8") as f:
        pages.append(Page("changelog.html", "Release notes", f.read(), "more"))
    # Functions first, in the order of the reference, then topics, then the rest.
    order = {"function": 0, "topic": 1, "more": 2}
    pages.sort(key=lambda p: order[p.kind])

    used, where = set(), {}
    for page in pages:
        page.body = cmark(drop_rules_and_contents(page.markdown))
        add_heading_ids(page, used)
        for anchor, _, _ in page.anchors:
            where.setdefault(anchor, (page.file, anchor))
            where.setdefault("~" + loose(anchor), (page.file, anchor))

    problems = []
    for page in pages:
        problems += [f"{page.file}: link to {m} has no target" for m in rewrite_links(page, where, pages)]
        mark_checked_examples(page)

    os.makedirs(out, exist_ok=True)
    short = version.short
    search = []
    for i, page in enumerate(pages):
        for anchor, heading, text in section_text(page):
            top = page.anchors and anchor == page.anchors[0][0]
            search.append({"u": page.file if top else f"{page.file}#{anchor}", "t": heading,
                           "p": page.title, "f": page.function or "", "x": text[:4000]})
        with open(os.path.join(out, page.file), "w", encoding="utf-8") as f:
            f.write(document(page.title, short, page.body + pager(pages, i), navigation(pages, page)))

    intro = cmark(drop_rules_and_contents(preamble))
    intro = re.sub(r"<h1>.*?</h1>", "", intro, flags=re.S)
    rows = "\n".join(
        f'<tr><td><a href="{p.file}">{html.escape(p.function)}</a></td>'
        f"<td><code>{html.escape(prototype(p))}</code></td></tr>"
        for p in pages if p.kind == "function")
    topics = "\n".join(f'<li><a href="{p.file}">{html.escape(p.title)}</a></li>'
                       for p in pages if p.kind != "function")
    body = f"""<h1>Quorvel Vantafile Plug-In {short} — function reference</h1>
<p class="version">Version {version.text} (build {version.build}). Search above: type a function's
name, a selector, an error code or part of a message.</p>
{intro}
<h2 id="functions">Functions</h2>
<table class="functions"><thead><tr><th>Function</th><th>Prototype</th></tr></thead>
<tbody>
{rows}
</tbody></table>
<h2 id="topics">Topics</h2>
<ul>
{topics}
</ul>
"""
    with open(os.path.join(out, "index.html"), "w", encoding="utf-8") as f:
        f.write(document("Function reference", short, body, navigation(pages, None)))
    with open(os.path.join(out, "search-index.js"), "w", encoding="utf-8") as f:
        f.write("// Generated by doc_pages.py: one entry per heading of the reference.\n")
        f.write("window.VF_SEARCH = " + json.dumps(search, ensure_ascii=False, indent=0) + ";\n")
    here = os.path.dirname(os.path.abspath(__file__))
    for asset in ("search.js", "style.css"):
        with open(os.path.join(here, "doc_assets", asset), encoding="utf-8") as src, \
                open(os.path.join(out, asset), "w", encoding="utf-8") as dst:
            dst.write(src.read())
    return pages, problems


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", required=True)
    parser.add_argument("--out", required=True)
    args = parser.parse_args()
    pages, problems = build(args.root, args.out)
    for problem in problems:
        print("doc_pages:", problem, file=sys.stderr)
    print(f"doc_pages: {len(pages) + 1} pages in {args.out}")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
