"""Files of at most 500 lines, functions of at most 80; what has a reason to be longer stands in size_exceptions.txt."""

import re

import tree

NAME = "sizes"
ADVICE = ("A longer file is two subjects, a longer function several steps: split it. Where that would hurt, add a line "
          "with the reason to tools/checks/size_exceptions.txt.")
FILE_LINES, FUNCTION_LINES = 500, 80
EXCEPTIONS = "tools/checks/size_exceptions.txt"

_longFunction = "namespace A {\nvoid Long(int a) const {\n" + "    if (a) {\n    }\n" * 40 + "}\n}\n"
BAD = {
    "data/Long.cpp": "// line\n" * 501,
    "data/Function.cpp": _longFunction,
    "data/Short.cpp": "// short\n",
    EXCEPTIONS: "data/Short.cpp 600 because\ndata/Function.cpp 700\n",
}
BAD_COUNT = 4
GOOD = {
    "data/Full.cpp": "// line\n" * 500,
    "data/Table.cpp": "const int table[] = {\n" + "    1,\n" * 90 + "};\n",
    "data/Function.cpp": _longFunction,
    "data/Class.h": "class C {\n" + "    int F() {\n        return '{';\n    }\n" * 40 + "};\n",
    EXCEPTIONS: "# path[:function] lines reason\ndata/Function.cpp:Long 90 one step per field of the format\n",
}

# Comments, raw strings, strings and character literals: what may hold a brace that is none.
_LITERALS = re.compile(r'//[^\n]*|/\*.*?\*/|R"([^(\s]*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])*\'',
                       re.DOTALL)
_SCOPE = re.compile(r"\b(namespace|class|struct|union|enum|extern)\b(?![^;{}]*\)\s*(?:const|noexcept|override|final|\s)*$)")
_NAME = re.compile(r"([~\w]+|operator\s*\S+?)\s*\(")


def Blank(text):
    """The text with every comment and literal replaced by blanks; lines stay lines."""
    text = _LITERALS.sub(lambda found: re.sub(r"[^\n]", " ", found.group(0)), text)
    # A macro's body is no scope of its own.
    return re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", lambda found: re.sub(r"[^\n]", " ", found.group(0)), text,
                  flags=re.MULTILINE)


def Functions(text):
    """(first line, number of lines, name) of every function that is no part of another one."""
    text = Blank(text)
    scopes = []
    headStart = 0
    for position, sign in ((found.start(), found.group(0)) for found in re.finditer(r"[{};]", text)):
        if sign == "{":
            head = text[headStart:position]
            inFunction = any(kind != "scope" for kind, _, _ in scopes)
            if inFunction:
                kind = "inner"
            elif _SCOPE.search(head):
                kind = "scope"
            elif "(" in head and not re.search(r"=\s*$", head):
                kind = "function"
            else:
                kind = "initialiser"
            scopes.append((kind, headStart + len(head) - len(head.lstrip()), head))
        elif sign == "}" and scopes:
            kind, start, head = scopes.pop()
            if kind == "function":
                first = text.count("\n", 0, start) + 1
                last = text.count("\n", 0, position) + 1
                name = _NAME.search(head)
                yield first, last - first + 1, name.group(1) if name else "?"
        headStart = position + 1


def Exceptions(root, paths):
    """{path or path:function: (lines, line of the list)} and the problems of the list itself."""
    limits, problems = {}, []
    if EXCEPTIONS not in paths:
        return limits, problems
    for number, line in enumerate(tree.Read(root, EXCEPTIONS).split("\n"), 1):
        if not line.strip() or line.startswith("#"):
            continue
        fields = line.split(None, 2)
        if len(fields) < 3 or not fields[1].isdigit():
            problems.append(f"{EXCEPTIONS}:{number}: wants \"path[:function] lines reason\"")
        else:
            limits[fields[0]] = (int(fields[1]), number)
    return limits, problems


def Problems(root, paths):
    limits, problems = Exceptions(root, paths)
    used = set()

    def Judge(key, lines, usual, what):
        if lines <= usual:
            return
        used.add(key)
        limit = limits.get(key, (usual, 0))[0]
        if lines > limit:
            problems.append(f"{what}: {lines} lines, at most {limit}")

    for path in tree.Code(paths) + [path for path in paths if path.endswith((".py", ".sh", ".cmake"))]:
        text = tree.Read(root, path)
        Judge(path, len(text.splitlines()), FILE_LINES, path)
        if path.endswith(tree.CODE):
            for first, lines, name in Functions(text):
                Judge(f"{path}:{name}", lines, FUNCTION_LINES, f"{path}:{first}: {name}")
    for key, (_, number) in limits.items():
        if key not in used:
            problems.append(f"{EXCEPTIONS}:{number}: {key} needs no exception (any more)")
    return problems
