"""Journals that somebody wrote to hurt: cheap to write, and slow to search for a search that isn't linear."""

from made_by_chance import Random

BIG, SMALL = 10_000_000, 1_000_000  # bytes of all bodies that consist of the same letters
LONG_QUERY = 4000  # bytes


def repeated(part, size=LONG_QUERY):
    """`part` as often as it fits into `size` bytes whole."""
    return part * (size // len(part.encode()))


def _thousand_letters():
    by_chance = Random(1)
    return "".join(chr(ord("a") + by_chance.below(26)) for _ in range(1000))


_PERIOD = repeated(_thousand_letters())
_AB = repeated("ab")
# They fold into more than one letter or into a letter of another length, or differ by language.
_AWKWARD_LETTERS = {
    "sharp s": "ß",
    "n with an apostrophe": "ŉ",
    "dotted I": "İ",
    "Kelvin sign": "\u212a",
    "iota with two marks": "ΐ",
    "ffi as one letter": "ﬃ",
}

# By the journal's name: its queries by their names
QUERIES = {
    "periodic": {
        "last letter differs": _PERIOD + "#",
        "middle letter differs": _PERIOD[:2000] + "#" + _PERIOD[2001:],
        "first differs": "#" + _PERIOD,
    },
    "abab": {"abab...c": _AB + "c", "cabab...": "c" + _AB, "ab...cab...": _AB + "c" + _AB},
    # At each place nearly all letters agree.
    "nearly": {"a...a": "a" * 2000, "ba...ab": "b" + "a" * 1998 + "b"},
    "one-letter": {
        "a...ab": repeated("a") + "b",
        "ba...a": "b" + repeated("a"),
        "Cyrillic Zh...Zhb": repeated("Ж") + "б",
        "aab": "aab",
    },
    "marks": {
        "e": "e",
        "e acute": "é",
        "two marks": "\u0323\u0301",
        "a letter and 2,000 marks": "e" + repeated("\u0323\u0301") + "x",
    },
    "foldings": {
        "s...st": repeated("s") + "t",
        "k...kc": repeated("k") + "c",
        "ffi...x": repeated("ffi") + "x",
        "iota, s, k, c": "ιskc",
        **{name: repeated(letter) + "x" for name, letter in _AWKWARD_LETTERS.items()},
    },
}

# By the journal's name: its bodies, made for a size
_BODIES = {
    "periodic": lambda size: [repeated(_thousand_letters(), size)],
    "abab": lambda size: [repeated("ab", size // 10)] * 10,
    "nearly": lambda size: [repeated("a" * 1999 + "b", size)],
    "one-letter": lambda size: [repeated("a", size), repeated("ж", size)],
    # Acute alone, and acute and dot below in turns: their classes differ, and each pair must change places.
    "marks": lambda size: ["e" + repeated(marks, size) for marks in ("\u0301", "\u0301\u0323")],
    "foldings": lambda size: [repeated(letter, size // 5) for letter in _AWKWARD_LETTERS.values()],
}


def files(name, size):
    """The files of the journal `name`: their paths and bytes. `size` is BIG or SMALL."""
    for number, body in enumerate(_BODIES[name](size), start=1):
        yield f"body-{number}.md", f"---\ndate: 2025-01-02T03:04:05Z\n---\n{body}".encode()
