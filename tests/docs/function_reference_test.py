#!/usr/bin/env python3
"""The structure of docs/functions.md that one page per function is built from: every "## VFile_"
section holds its own prototype, then parameters (when it has a heading for them), errors and
examples, in that order, and its examples call the function it documents.

    function_reference_test.py FUNCTIONS_MD
"""
import re
import sys
import unittest

PATH = sys.argv[1]
CALL = re.compile(r"\bVFile_[A-Za-z]+\b")


def sections(text):
    """(heading, body lines) for every level-2 section."""
    found = []
    for line in text.split("\n"):
        if line.startswith("## "):
            found.append((line[3:], []))
        elif found:
            found[-1][1].append(line)
    return found


def blocks(lines):
    """(first line index, code lines) of every fenced block."""
    found, start = [], None
    for index, line in enumerate(lines):
        if line.startswith("```"):
            if start is None:
                start = index
            else:
                found.append((start, lines[start + 1:index]))
                start = None
    return found, start


def marker(lines, word):
    """Indexes of the lines that open a part: "**Errors**", "**Examples**", ..."""
    return [i for i, line in enumerate(lines) if re.match(r"\*\*%s\*\*" % word, line)]


def check(heading, lines):
    """The problems of one function's section, as text; empty when it is well formed."""
    problems = []
    fenced, unclosed = blocks(lines)
    if unclosed is not None:
        return ["a code block is never closed"]
    content = [i for i, line in enumerate(lines) if line.strip()]
    if not fenced or not content or fenced[0][0] != content[0]:
        return ["does not open with its prototype"]
    prototype = set(CALL.findall("\n".join(fenced[0][1])))
    if not prototype:
        problems.append("its prototype names no function")
    parameters = marker(lines, "Parameters")
    errors = marker(lines, "Errors")
    examples = marker(lines, "Examples?")
    if len(errors) != 1 or len(examples) != 1 or len(parameters) > 1:
        return problems + ["has %d parameter, %d error and %d example parts; one each expected" %
                           (len(parameters), len(errors), len(examples))]
    if parameters and not parameters[0] < errors[0]:
        problems.append("its parameters do not come before its errors")
    if not errors[0] < examples[0]:
        problems.append("its errors do not come before its examples")
    # Error tables belong between the errors and the examples (a table of another function's
    # errors further down is what a bad merge leaves).
    for index, line in enumerate(lines):
        if line.startswith("| Code |") and not errors[0] < index < examples[0]:
            problems.append("an error table outside its errors, at line %d" % index)
    after = [code for start, code in fenced if start > examples[0]]
    if not after:
        problems.append("no example code after its examples heading")
    elif not prototype & set(CALL.findall("\n".join(after[0]))):
        problems.append("its examples do not call %s" % " or ".join(sorted(prototype)))
    return problems


class FunctionReference(unittest.TestCase):
    def test_every_function_section_is_whole_and_in_order(self):
        with open(PATH, encoding="utf-8") as f:
            text = f.read()
        functions = [(h, body) for h, body in sections(text) if CALL.search(h)]
        self.assertGreaterEqual(len(functions), 19)
        problems = ["%s: %s" % (h, p) for h, body in functions for p in check(h, body)]
        self.assertEqual(problems, [])

    def test_the_check_finds_a_spliced_section(self):
        whole = ["", "```", "VFile_A( x )", "```", "**Parameters**", "**Errors**",
                 "| Code | Message |", "**Examples**", "```", "VFile_A( 1 )", "```"]
        self.assertEqual(check("VFile_A", whole), [])
        cut = whole[:6]  # errors, and then the next function's heading
        self.assertTrue(check("VFile_A", cut))
        foreign = whole[:9] + ["VFile_B( 1 )", "```"]
        self.assertEqual(check("VFile_A", foreign), ["its examples do not call VFile_A"])
        late_table = whole + ["| Code | Message |"]
        self.assertTrue(check("VFile_A", late_table))
        swapped = whole[:5] + ["**Examples**", "```", "VFile_A( 1 )", "```", "**Errors**"]
        self.assertTrue(check("VFile_A", swapped))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
