"""Above a seam there is no platform: no header of a system and no test of which system it is."""

import re

import tree

NAME = "platform code"
ADVICE = ("Put the call behind a seam: a header of plain operations, and its code in a folder win32/, posix/ or x11/ "
          "beside it.")
BAD = {
    "data/A.cpp": "#include <windows.h>\n",
    "data/B.cpp": "#include <sys/stat.h>\n",
    "data/C.cpp": "#ifdef _WIN32\n#endif\n",
    "gui/D.h": "#include <X11/Xlib.h>\n",
    "gui/E.h": "#if defined(__linux__) || 0\n#endif\n",
}
BAD_COUNT = 5
GOOD = {
    "foundation/platform/win32/Files.cpp": "#include <windows.h>\n#ifdef _WIN64\n#endif\n",
    "gui/window/x11/Window.cpp": "#include <X11/Xlib.h>\n",
    "data/A.cpp": "#include <thread>\n#if defined(__SSE2__)\n#endif\n// not windows.h here\n",
}

HEADERS = re.compile(
    r"^(windows|windowsx|winbase|winuser|wingdi|winnt|winsock2?|commctrl|commdlg|shell\w*|shl\w+|shobj\w*|ole\w*|objbase|"
    r"objidl|dwmapi|d3d\w*|wincodec|tchar|io|direct|process|unistd|fcntl|dlfcn|dirent|poll|pthread|sched|semaphore|"
    r"pwd|grp|langinfo|locale_t|ftw|glob|link|execinfo|spawn|termios|syslog|ft2build)\.h$"
    r"|^(sys|X11|fontconfig|freetype2?|linux|arpa|netinet|GL|xcb)/", re.IGNORECASE)
MACROS = re.compile(
    r"\b(_WIN32|WIN32|_WIN64|WIN64|__WIN32__|__WINDOWS__|_MSC_VER|__MINGW\w*__|__CYGWIN__|__linux__|__linux|linux|"
    r"__unix__|__unix|unix|__gnu_linux__|__APPLE__|__FreeBSD__|__ANDROID__|__GLIBC__|_POSIX_\w+)\b")
CONDITION = re.compile(r"\s*#\s*(if|ifdef|ifndef|elif)\b(.*)")


def Problems(root, paths):
    problems = []
    for path in tree.Code(paths):
        if tree.IsSeam(path):
            continue
        text = tree.Read(root, path)
        for number, _, name in tree.Includes(text):
            if HEADERS.search(name):
                problems.append(f"{path}:{number}: platform header {name}")
        for number, line in enumerate(text.split("\n"), 1):
            found = CONDITION.match(line)
            if found and MACROS.search(found.group(2)):
                problems.append(f"{path}:{number}: asks which platform it is: {line.strip()}")
    return problems
