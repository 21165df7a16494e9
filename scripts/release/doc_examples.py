#!/usr/bin/env python3
"""Runs the checked examples of docs/functions.md through the emulated host, so the examples a
reader sees cannot drift from what the plug-in does. The same blocks become the "checked
example" figures of the HTML reference.

A checked example is a fenced block with the info string fmcalc-checked. Its lines:
  calculation  // expected  commentary      result compared with expected
  calculation                               run for its effect; must not fail in the host
  // text                                   a comment
Expected is a quoted text ("a¶b": ¶ is a carriage return, \" a quote, \\ a backslash), or a
number, or a number followed by a quoted message: the result is that number and
VFile_Get( "lastErrorMessage" ) is that message afterwards. The "//" of an expectation follows
the calculation after at least two blanks. Each level-2 section's blocks run in order in one
host, with a database in a new empty folder, so relative paths land in that folder.
Usage: doc_examples.py REFERENCE.md PLUGIN HOST_COMMAND..."""
import os
import re
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import fmhost_session  # noqa: E402

LANGUAGE = "fmcalc-checked"
EXPECTATION = re.compile(r"^(?P<calc>.*?\S)\s{2,}//\s*(?P<expected>.*)$")
QUOTED = re.compile(r'"((?:[^"\\]|\\.)*)"')
NUMBER = re.compile(r"-?\d+(?:\.\d+)?")


class Example:
    def __init__(self, section, line_number, calc, result=None, message=None):
        self.section, self.line_number, self.calc = section, line_number, calc
        self.result, self.message = result, message  # None: not checked


def unquote(text):
    return re.sub(r"\\(.)", r"\1", text).replace("¶", "\r")


def parse_expected(text):
    """(result, message) from the text after //; what follows them is commentary."""
    quoted = QUOTED.match(text)
    if quoted:
        return unquote(quoted.group(1)), None
    number = NUMBER.match(text)
    if not number:
        raise ValueError(f"expected a quoted text or a number after //, not {text!r}")
    rest = text[number.end():].lstrip()
    message = QUOTED.match(rest)
    return number.group(0), unquote(message.group(1)) if message else None


def extract(markdown):
    """{level-2 heading: [Example, ...]} in the order of the file."""
    sections, section, in_block, fence = {}, None, False, None
    for number, line in enumerate(markdown.splitlines(), 1):
        stripped = line.strip()
        if fence is None and line.startswith("```"):
            fence = line[3:].strip()
            in_block = fence == LANGUAGE
            continue
        if fence is not None and stripped == "```":
            fence, in_block = None, False
            continue
        if fence is None and line.startswith("## "):
            section = line[3:].strip()
            continue
        if not in_block or not stripped or stripped.startswith("//"):
            continue
        match = EXPECTATION.match(line)
        if match:
            result, message = parse_expected(match.group("expected"))
            example = Example(section, number, match.group("calc").strip(), result, message)
        else:
            example = Example(section, number, stripped)
        sections.setdefault(section, []).append(example)
    return sections


def run_section(host_command, plugin, examples):
    """Failure texts for one section's examples, run in one host in a new folder."""
    with tempfile.TemporaryDirectory(prefix="vf-examples-") as folder:
        calcs, checks = [], []
        for example in examples:
            calcs.append(example.calc)
            checks.append((example, "result"))
            if example.message is not None:
                calcs.append('VFile_Get( "lastErrorMessage" )')
                checks.append((example, "message"))
        answers = fmhost_session.evaluate(host_command, plugin, calcs,
                                          database=os.path.join(folder, "Solution.fmp12"),
                                          cwd=folder)
    failures = []
    for (example, what), answer in zip(checks, answers):
        wanted = example.result if what == "result" else example.message
        where = f"line {example.line_number}: {example.calc}"
        if answer is None:
            failures.append(f"{where}: the host reported an error instead of a result")
        elif wanted is not None and answer != wanted:
            failures.append(f"{where}: {what} {answer!r}, the reference says {wanted!r}")
    return failures


def main():
    reference, plugin, host_command = sys.argv[1], sys.argv[2], sys.argv[3:]
    with open(reference, encoding="utf-8") as f:
        sections = extract(f.read())
    failures, count = [], 0
    for section, examples in sections.items():
        count += len(examples)
        for failure in run_section(host_command, plugin, examples):
            failures.append(f"[{section}] {failure}")
    for failure in failures:
        print("FAILED:", failure)
    checked = sum(1 for e in (x for s in sections.values() for x in s) if e.result is not None)
    print(f"{count} example calculations in {len(sections)} sections, {checked} with a result "
          f"to compare: {len(failures)} failed")
    sys.exit(1 if failures or not count else 0)


if __name__ == "__main__":
    main()
