"""Where a source can be broken in one small way: the points that mutants.py draws from."""

import collections
import dataclasses
import os
import random
import re

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
KINDS = ("condition", "comparison", "statement", "constant", "literal", "rows", "rule", "word",
         "arithmetic")


TOKEN = re.compile(r"""
    (?P<skipped>//[^\n]*|/\*.*?\*/|^[ \t]*\#[^\n]*)
  | (?P<text>"(?:\\.|[^"\\\n])*")
  | (?P<char>'(?:\\.|[^'\\\n])+')
  | (?P<number>\d(?:'\d|[\w.])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign>\|\||&&|[<>=!+*/-]=|->|::|[^\s\w])
""", re.VERBOSE | re.MULTILINE | re.DOTALL)
COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
ARITHMETIC = {"+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+="}
JOINED = {"&&": "||", "||": "&&"}
WORDS = {"true": "false", "false": "true", "credit": "debit", "debit": "credit", "plain": "silent",
         "silent": "plain", "first_reason": "plain", "Static": "Keyset", "Keyset": "Static",
         "Dynamic": "Static", "KeysetPessimistic": "Keyset", "first_of": "without_first",
         "without_first": "first_of", "text_or_empty": "to_text", "trim": "", "trimmed": "text",
         "sum": "product", "product": "sum"}
NO_STATEMENT = {"using", "namespace", "template", "const", "constexpr", "static", "auto", "struct",
                "class", "enum", "friend", "explicit", "virtual", "public", "private", "case",
                "default", "else", "if", "for", "while", "do", "switch", "try", "throw", "extern",
                "inline", "typedef", "return", "break", "continue"}
LEAVES = {"return", "break", "continue"}
ROW = re.compile(r"[ ]+(?:\{\"|Of::).*(?:\}|\)),$")
RULE = re.compile(r"(?<=, )\w+(?=<|\(\))|(?<=&)\w+::\w+")


@dataclasses.dataclass
class Point:
    kind: str
    path: str
    start: int
    end: int
    new: str


class Source:
    """One file as tokens, with the places where it can be broken."""

    def __init__(self, path):
        self.path = path
        with open(os.path.join(ROOT, path), encoding="utf-8", newline="") as file:
            self.text = file.read()
        self.tokens = [m for m in TOKEN.finditer(self.text) if m.lastgroup != "skipped"]
        self.words = [token[0] for token in self.tokens]
        self.pair = {}
        opened = []
        for i, token in enumerate(self.tokens):
            if token[0] in "([{":
                opened.append(i)
            elif token[0] in ")]}" and opened:
                self.pair[i] = opened.pop()
                self.pair[self.pair[i]] = i
        asserted = [i for i, word in enumerate(self.words) if word == "static_assert"]
        self.asserted = {i for first in asserted for i in range(first, self.pair[first + 1] + 1)}

    def word(self, i):
        return self.words[i] if 0 <= i < len(self.words) else ""

    def spaced(self, i):
        """Only what stands between blanks is an operator of two sides."""
        token = self.tokens[i]
        return self.text[token.start() - 1].isspace() and self.text[token.end()].isspace()

    def declares(self, i):
        """The size of an array, or a member's first value, which is seldom the last."""
        sized = "array" in self.words[max(0, i - 5):i]
        member = self.path.endswith(".h") and self.word(i - 1) == "=" and self.word(i + 1) == ";"
        return sized or member

    def change(self, kind, first, last, new):
        start, end = self.tokens[first].start(), self.tokens[last].end()
        return Point(kind, self.path, start, end, new)

    def points(self, chance):
        for i in range(len(self.tokens)):
            if i not in self.asserted:
                yield from self.of_token(i, chance)
                yield from self.statement(i)
        yield from self.of_rows()

    def of_token(self, i, chance):
        token, word = self.tokens[i], self.words[i]
        if word == "if" and self.word(i + 1) == "(":
            first, last = i + 2, self.pair[i + 1] - 1
            first = max([j + 1 for j in range(first, last) if self.words[j] == ";"] + [first])
            if self.words[first] not in ("const", "auto", "!"):
                condition = self.text[self.tokens[first].start():self.tokens[last].end()]
                yield self.change("condition", first, last, f"!({condition})")
        elif word == "!":
            yield self.change("condition", i, i, "")
        elif word in JOINED and self.spaced(i):
            yield self.change("condition", i, i, JOINED[word])
        elif word in COMPARISONS and self.spaced(i):
            yield self.change("comparison", i, i, COMPARISONS[word])
        elif word in ARITHMETIC and self.spaced(i):
            near = {token.lastgroup for token in self.tokens[i - 6:i + 7]}
            if not near & {"text", "char"}:  # no texts joined
                yield self.change("arithmetic", i, i, ARITHMETIC[word])
        elif word == "-" and self.word(i - 1) in ("(", ",", "=", "?", ":", "return"):
            yield self.change("arithmetic", i, i, "")
        elif word in WORDS and self.word(i + 1) != "=":
            yield self.change("word", i, i, WORDS[word])
        elif token.lastgroup == "number" and not self.declares(i):
            whole = re.match(r"\d+(?![\dxX])", word)
            if whole:
                yield self.change("constant", i, i, str(int(whole[0]) + 1) + word[whole.end():])
        elif token.lastgroup == "text" and self.word(i - 1) != "extern":
            yield from self.literal(i, chance)

    def literal(self, i, chance):
        text = self.words[i]
        places = [p for p in range(1, len(text) - 1)
                  if (text[p].isalnum() or text[p] == " ") and text[p - 1] != "\\"]
        if not places:
            return
        place = chance.choice(places)
        old = text[place]
        if old == " ":
            new = ""
        elif old.isdigit():
            new = str((int(old) + 1) % 10)
        else:  # another letter: names in a statement do not heed case
            new = "A" if old == "Z" else "a" if old == "z" else chr(ord(old) + 1)
        yield self.change("literal", i, i, text[:place] + new + text[place + 1:])

    def statement(self, i):
        """A statement that declares nothing, or a way out behind an `if`."""
        before, word = self.word(i - 1), self.words[i]
        behind_if = before == ")" and self.word(self.pair.get(i - 1, 0) - 1) in ("if", "for")
        if not (before in (";", "{", "}") or behind_if or before == "else"):
            return
        if word in NO_STATEMENT and not (behind_if and word in LEAVES):
            return
        if self.tokens[i].lastgroup != "word" and word not in "*(":
            return
        end = i
        while self.word(end) not in (";", ""):
            closes = self.words[end] in ")]}"
            named = self.tokens[end + 1].lastgroup == "word" if end + 1 < len(self.words) else True
            declares = named and re.match(r"[\w>&]", self.words[end]) and word not in LEAVES
            if closes or declares:
                return
            end = self.pair[end] + 1 if self.words[end] in "([{" else end + 1
        if end > i and self.word(end) == ";":
            yield self.change("statement", i, end, "{}")

    def of_rows(self):
        """Neighbours in a table: two rows swapped, or a row with a rule of the other."""
        lines = self.text.split("\n")
        starts = [0]
        for line in lines:
            starts.append(starts[-1] + len(line) + 1)
        for n, (row, other) in enumerate(zip(lines, lines[1:])):
            if not (ROW.match(row) and ROW.match(other)) or row == other:
                continue
            yield Point("rows", self.path, starts[n], starts[n + 1] + len(other), f"{other}\n{row}")
            for own, neighbour in zip(RULE.finditer(row), RULE.finditer(other)):
                if own[0] != neighbour[0]:
                    start = starts[n] + own.start()
                    yield Point("rule", self.path, start, start + len(own[0]), neighbour[0])


def sources():
    found = []
    for folder, folders, names in os.walk(os.path.join(ROOT, "src")):
        folders.sort()
        found += [os.path.relpath(os.path.join(folder, name), ROOT).replace(os.sep, "/")
                  for name in sorted(names) if name.endswith((".h", ".cpp"))]
    return found


def reach(paths):
    """How many sources are compiled again when a header changes."""
    includes = {}
    for path in paths:
        with open(os.path.join(ROOT, path), encoding="utf-8") as file:
            includes[path] = {f"src/{name}" for name in
                              re.findall(r'(?m)^#include "([^"]+)"', file.read())}
    count = collections.Counter()
    for path in paths:
        seen, ahead = set(), [path]
        while ahead:
            seen.add(here := ahead.pop())
            ahead += [p for p in includes.get(here, ()) if p not in seen]
        count.update(seen if path.endswith(".cpp") else ())
    return count


def candidates(room, folders, seed, widest):
    """Every point of a room in the order of the draw: kinds in turn, and no file over its share."""
    chance = random.Random(f"{seed} {room}")
    paths = sources()
    wide = reach(paths)
    ahead = {kind: [] for kind in KINDS}
    for path in paths:
        if path.split("/")[1] in folders and wide[path] <= widest:
            for point in Source(path).points(chance):
                ahead[point.kind].append(point)
    for kind in KINDS:
        chance.shuffle(ahead[kind])
    held = collections.Counter(point.path for points in ahead.values() for point in points)
    used = collections.Counter()
    number = 0
    while any(ahead.values()):
        for kind in KINDS:
            if ahead[kind]:
                point = min(ahead[kind], key=lambda p: (used[p.path] + 1) ** 2 / held[p.path])
                ahead[kind].remove(point)
                used[point.path] += 1
                number += 1
                yield number, point
