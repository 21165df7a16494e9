#!/usr/bin/env python3
"""The HTML reference as the package ships it: built from docs/functions.md into a scratch
folder, then checked as a reader would use it offline. Each of the plug-in's nineteen functions
(named by the DLL's own prototype strings) has a page with its prototype and a checked example;
every link leads to a page and anchor that exist; pages load only files next to them; the search
data has an entry for every function that leads to its page.
Usage: doc_pages_test.py ROOT PLUGIN"""
import html
import json
import os
import re
import sys
import tempfile

root, plugin = sys.argv[1], sys.argv[2]
sys.path.insert(0, os.path.join(root, "scripts", "release"))
import doc_pages  # noqa: E402
import pe_resources  # noqa: E402

failures = []
pe = pe_resources.PeFile(plugin)
functions = [pe.string(100 + i).split("(")[0] for i in range(1, 20)]

with tempfile.TemporaryDirectory(prefix="vf-doc-pages-") as out:
    pages, problems = doc_pages.build(root, out)
    failures += problems
    files = {f: open(os.path.join(out, f), encoding="utf-8").read()
             for f in os.listdir(out) if f.endswith(".html")}
    ids = {f: set(re.findall(r'\bid="([^"]+)"', text)) for f, text in files.items()}

    by_function = {p.function: p for p in pages if p.function}
    for name in functions:
        page = by_function.get(name)
        if not page:
            failures.append(f"{name}: no page")
            continue
        text = files[page.file]
        code = [html.unescape(re.sub(r"<[^>]+>", "", c)).strip()
                for c in re.findall(r"<pre><code>(.*?)</code></pre>", text, re.S)]
        if not code or not code[0].startswith(name):
            failures.append(f"{page.file}: does not open with {name}'s prototype")
        if 'class="checked-example"' not in text:
            failures.append(f"{page.file}: no checked example")
        if name not in files["index.html"] or f'href="{page.file}"' not in files["index.html"]:
            failures.append(f"index.html: no link to {name}")

    for file, text in files.items():
        for target in re.findall(r'(?:href|src)="([^"]*)"', text):
            target = html.unescape(target)
            if re.match(r"[a-z]+:", target):
                if re.search(r'<(?:script|link|img)[^>]+(?:src|href)="' + re.escape(target), text):
                    failures.append(f"{file}: loads {target} from the network")
                continue
            path, _, anchor = target.partition("#")
            path = path or file
            if not os.path.exists(os.path.join(out, path)):
                failures.append(f"{file}: link to missing {path}")
            elif anchor and anchor not in ids.get(path, ()):
                failures.append(f"{file}: link to missing anchor {target}")
        for script in ("search-index.js", "search.js"):
            if f'<script src="{script}"' not in text:
                failures.append(f"{file}: without {script}")

    with open(os.path.join(out, "search-index.js"), encoding="utf-8") as f:
        data = f.read()
    entries = json.loads(data[data.index("=") + 1:].rstrip().rstrip(";"))
    for name in functions:
        own = [e for e in entries if e["f"] == name and e["t"].startswith(name)]
        if not own or own[0]["u"] != by_function.get(name, doc_pages.Page("", "", "", "")).file:
            failures.append(f"search-index.js: no entry leading to {name}'s page")
    if not any("Not enough parameters" in e["x"] for e in entries):
        failures.append("search-index.js: the messages are not searchable")

for failure in failures:
    print("FAILED:", failure)
print(f"{len(pages) + 1} pages, {len(functions)} functions:",
      "all present and linked" if not failures else f"{len(failures)} problems")
sys.exit(1 if failures else 0)
