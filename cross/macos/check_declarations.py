#!/usr/bin/env python3
"""Finds declarations in include/ that no mac/ folder uses. Prints them and exits 1 when there are any.

What is called is a function, a constant, a property or a selector; it must stand in a source. A type must
stand in a source or in another declaration.
"""
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
HEADERS = sorted((ROOT / "cross" / "macos" / "include").rglob("*.h"))
SOURCES = sorted(path for pattern in ("*/mac/*.mm", "*/mac/*.h") for path in ROOT.glob(pattern))

# Selectors that the compiler sends for a piece of syntax.
SYNTAX = {
    "countByEnumeratingWithState:objects:count:": r"for \(.* in ",
    "dictionaryWithObjects:forKeys:count:": r"@\{",
    "numberWithBool:": r"@YES|@NO",
    "numberWithInt:": r"@\(",
    "objectAtIndexedSubscript:": r"\w\[\w",
    "objectForKeyedSubscript:": r"\w\[\w",
}


def without_comments(text):
    return re.sub(r"//[^\n]*|/\*.*?\*/", "", text, flags=re.S)


def word(name):
    return re.compile(rf"(?<![\w@]){re.escape(name)}(?!\w)")


def selectors(text):
    for method in re.findall(r"^[-+] \([^;]*;", text, re.M):
        signature = re.sub(r"^[-+] \((?:[^()]|\([^()]*\))*\)", "", method)
        pieces = re.findall(r"(\w+:)\(", signature)
        yield "".join(pieces) if pieces else signature.strip(" ;")


def properties(text):
    return re.findall(r"@property[^;]*?(\w+);", text)


def constants(text):
    for body in re.findall(r"\benum\b[^{;]*\{([^}]*)\}", text):
        yield from re.findall(r"(\w+)\s*=", body)
    yield from re.findall(r"^extern [^;({]*?(\w+);", text, re.M)


def functions(text):
    return re.findall(r"^(?!typedef|extern|@|[-+])[\w ]+\*? ?\b(\w+)\((?!\^)[^;{]*\);", text, re.M)


def types(text):
    names = set(re.findall(r"@(?:interface|protocol) (\w+)", text))
    names |= set(re.findall(r"^typedef (?!struct \w+ \{|enum)[^;{]*?(\w+);", text, re.M))
    names |= set(re.findall(r"^\} (\w+);", text, re.M))
    names |= set(re.findall(r"^typedef enum (\w+)", text, re.M))
    return names


def uses_selector(selector, source):
    if selector in SYNTAX:
        return re.search(SYNTAX[selector], source)
    return all(re.search(rf"(?<!\w){re.escape(piece)}", source) for piece in re.findall(r"\w+:?", selector))


def unused(text, source):
    for name in [*functions(text), *constants(text)]:
        if not word(name).search(source):
            yield name
    for name in properties(text):
        if not re.search(rf"\.{name}\b|\b{name}\]|\bset{name[0].upper()}{name[1:]}:", source):
            yield name
    for selector in selectors(text):
        if not uses_selector(selector, source):
            yield selector
    # A type's own declaration names it, some of them twice; a use is any other mention.
    introducing = r"^typedef (?:[^;{]*[ *])?\w+;|^\} \w+;|^typedef (?:struct|enum) \w+"
    mentions = re.sub(introducing, lambda found: without_name(found[0]), text, flags=re.M)
    mentions = re.sub(r"@(interface|protocol) \w+", "", re.sub(r"@class [^;]*;", "", mentions))
    for name in types(text):
        if not word(name).search(source) and not word(name).search(mentions):
            yield name


def without_name(declaration):
    """A type declaration without the name that it introduces."""
    return re.sub(r"\w+;?$", "", declaration)


def main():
    text = "\n".join(without_comments(path.read_text(encoding="utf-8")) for path in HEADERS)
    source = "\n".join(without_comments(path.read_text(encoding="utf-8")) for path in SOURCES)
    left = sorted(set(unused(text, source)))
    for name in left:
        print(f"declared in cross/macos/include and used by nobody: {name}")
    count = len(list(functions(text))) + len(list(constants(text))) + len(properties(text)) + len(list(selectors(text)))
    print(f"{count} declarations and {len(types(text))} types, {len(left)} unused")
    sys.exit(1 if left else 0)


if __name__ == "__main__":
    main()
