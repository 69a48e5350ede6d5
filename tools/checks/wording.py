"""The tree speaks of the program alone: not of papers that told what to build, not of one machine, not of work to do."""

import re

import tree

NAME = "wording"
ADVICE = ("Say why the code is as it is, in the program's own words or with a published standard by its name; finish "
          "what is marked as unfinished; write paths relative to the project.")

# A bracket in each pattern keeps this file from matching itself.
PATTERNS = [
    (re.compile(r"\b[Pp]art[s]? [1-8]\.[0-9]"), "numbers a chapter of some other paper"),
    (re.compile(r"\b[Tt]he [s]pec(ification)?s?\b(?! of\b)|\b[s]pec\.md|\b[d]esign\.md"), "names where a rule came from"),
    (re.compile(r"\b[Ii][s]sue #?[0-9]+"), "names a ticket"),
    (re.compile(r"/w[o]rk/|/t[m]p/wt\b|/r[o]ot/|/h[o]me/[a-z]"), "a path of one machine"),
    (re.compile(r"\b(T[O]DO|F[I]XME|X[X]X|H[A]CK)\b"), "marks unfinished work"),
    # A text that the program itself raises ends with the words and is no mark.
    (re.compile(r"\bnot (yet )?[i]mplemented\b(?!\")", re.IGNORECASE), "marks unfinished work"),
]
BINARY = (".bmp", ".gif", ".ico", ".png", ".icc", ".bin")
BAD = {
    "data/A.cpp": "// see P" + "art 6.2\n",
    "README.md": "as the s" + "pec says. The s" + "pec has it.\n",
    "tools/a.sh": "# T" + "ODO later\ncd /r" + "oot/x\n",
    "fuzz/Is" + "sue 12.txt": "\n",
}
BAD_COUNT = 5
GOOD = {"data/A.cpp": "// ITU T.81 F.2.2; in part 2 of the walk; mktemp XXXXXX; issue a warning\n" + "\"is not implement" + "ed\""}


def Problems(root, paths):
    problems = []
    for path in paths:
        lines = [(0, path)]
        if not path.endswith(BINARY) and not path.startswith("fuzz/seeds/"):
            lines += list(enumerate(tree.Read(root, path).split("\n"), 1))
        for number, line in lines:
            for pattern, meaning in PATTERNS:
                if pattern.search(line):
                    problems.append(f"{path}:{number}: {meaning}: {line.strip()[:100]}")
    return problems
