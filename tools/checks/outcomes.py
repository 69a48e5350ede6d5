"""How tests outside GoogleTest tell what came of them: a line for the reader, and one for the sum in a file."""


def Report(results, outcome, name, seconds, reason=""):
    """outcome is passed, failed or skipped; results is the file's path, or None."""
    reason = reason.replace("\n", " ").replace("\t", " ")
    print(f"   {outcome}: {name} ({seconds:.1f} s){': ' + reason if reason else ''}", flush=True)
    if results:
        with open(results, "a", encoding="utf-8") as file:
            file.write(f"{outcome}\t{name}\t{reason}\n")
