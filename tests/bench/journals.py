"""The made-up journals on the disk. They are the same on every machine to the byte."""

import multiprocessing
import shutil
import sys
import time
import unicodedata
from functools import partial
from pathlib import Path
from typing import NamedTuple

import hostile
from languages import CJK, ENGLISH, MIXED
from made_by_chance import Random

# Increase this whenever the text of the journals changes. Then journals of older runs are written again.
GENERATION = 1
TAG = "garden"  # every tenth entry has it
OTHER_TAGS = ("work", "family", "ideas", "reading", "travel", "health", "dreams")
TWENTY_YEARS = 7305 * 24 * 60 * 60  # seconds


class Journal(NamedTuple):
    """A journal on the disk: a home directory with the journal in its default folder."""

    home: Path

    @property
    def folder(self):
        return self.home / "Documents/Halvane"

    def largest_file(self):
        """The size in bytes."""
        return max(path.stat().st_size for path in self.folder.rglob("*.md"))

    def folders(self):
        """How many folders it has, with its own."""
        return 1 + sum(path.is_dir() for path in self.folder.rglob("*"))


class Journals(NamedTuple):
    """Writes journals below the folder `cache`, or finds them there from an earlier run of the same day."""

    cache: Path
    today: int  # days since 1970-01-01; the newest entry is from the day before

    def english(self, entries):
        return self._ordinary("english", (ENGLISH,), entries)

    def mixed(self):
        return self._ordinary("mixed", MIXED, 10_000)

    def cjk(self):
        return self._ordinary("cjk", CJK, 10_000)

    def hostile(self, name, size):
        return self._written(f"hostile-{name}-{size}", f"generation {GENERATION}", hostile.files(name, size))

    def _ordinary(self, name, languages, entries):
        stamp = f"generation {GENERATION} until day {self.today}"
        return self._written(f"{name}-{entries}", stamp, files(languages, entries, self.today))

    def _written(self, name, stamp, files_of_journal):
        """The stamp is written last: a journal that was broken off half-way has none."""
        journal = Journal(self.cache / name)
        stamp_file = journal.home / "generated"
        if stamp_file.exists() and stamp_file.read_text() == stamp:
            return journal
        print("writing the journal", name, file=sys.stderr)
        shutil.rmtree(journal.home, ignore_errors=True)
        for path, data in files_of_journal:
            file = journal.folder / path
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_bytes(data)
        stamp_file.write_text(stamp)
        return journal


def files(languages, entries, until):
    """The files of a journal, oldest first: each one's path, year/month/moment.md, and its bytes.

    The entries are spread evenly over the twenty years before the day `until`. The languages take turns.
    """
    with multiprocessing.Pool() as pool:
        yield from pool.imap(partial(_file, languages, entries, until), range(entries), chunksize=100)


def _file(languages, entries, until, index):
    by_chance = Random(index)
    language = languages[index % len(languages)]
    share = TWENTY_YEARS // entries  # each entry has one, with a moment in it
    moment = time.gmtime(until * 86400 - (entries - index) * share + by_chance.below(share))
    tags = [TAG] if index % 10 == 4 else []
    tags += [OTHER_TAGS[by_chance.below(len(OTHER_TAGS))] for _ in range(by_chance.below(4))]
    body = _body(language, index // len(languages), _body_size(by_chance))
    if language != ENGLISH:
        body = _with_markers(body, by_chance, language, ENGLISH, index)
    front_matter = [
        f"date: {time.strftime('%Y-%m-%dT%H:%M:%SZ', moment)}",
        f"duration_seconds: {len(body) // 15}",
        f"cleaned: {'true' if by_chance.below(2) == 0 else 'false'}",
        f"language: {language.code}",
        *([f"tags: [{', '.join(tags)}]"] if tags else []),
    ]
    text = "\n".join(["---", *front_matter, "---\n\n"]).encode() + body + b"\n"
    return time.strftime("%Y/%m/%Y-%m-%d-%H%M%S.md", moment), text


def _body_size(by_chance):
    """In bytes: log-normal with a median of 1.5 KB and a mean of 2.4 KB.

    The number of heads among 64 tossed coins is as good as normal, and integers, unlike logarithms, come out the same
    everywhere.
    """
    step = 12743  # e^(0.97 / 4) in ten-thousandths: four steps are one deviation
    steps = by_chance.next().bit_count() - 32
    low = 1_328_800  # half a step below the median, in thousandths of a byte
    for _ in range(steps):
        low = low * step // 10000
    for _ in range(-steps):
        low = low * 10000 // step
    return (low + by_chance.below(low * step // 10000 - low)) // 1000


def _body(language, number, size):
    """About `size` bytes in `language`, the `number`th body of its kind, with its share of the markers."""
    by_chance = Random(1_000_003 * number + ord(language.name[0]))
    words = language.words.encode().split()
    blank = language.blank.encode()
    body = b""
    while len(body) < size:
        if body:
            body += b"\n\n" if by_chance.below(4) == 0 else blank
        body += _sentence(by_chance, words, blank) + language.full_stop.encode()
    body = _with_markers(body, by_chance, language, language, number)
    return unicodedata.normalize("NFD", body.decode()).encode() if language.decomposed else body


def _sentence(by_chance, words, blank):
    text = blank.join(by_chance.words(words, 4 + by_chance.below(12)))
    return text[:1].upper() + text[1:]  # of bytes, upper() changes only those of ASCII letters


def _with_markers(body, by_chance, language, markers, number):
    if number % 1000 == 617:
        body = _with_word(body, by_chance, language, markers.rare.written)
    if number * 7 % 10 < 3:
        body = _with_word(body, by_chance, language, markers.common.written)
    return body


def _with_word(body, by_chance, language, word):
    """Puts `word` before a full stop."""
    stop = body.find(language.full_stop.encode(), by_chance.below(len(body)))
    at = len(body) if stop < 0 else stop
    return body[:at] + (language.blank + word).encode() + body[at:]
