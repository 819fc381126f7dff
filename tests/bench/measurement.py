"""What the measurements have in common."""

import json
import time
from collections.abc import Callable
from pathlib import Path
from typing import NamedTuple

from child import Child
from goals import Goal
from journals import Journals
from report import Report


class Run(NamedTuple):
    """What a measurement gets."""

    server: Path  # the program under test
    programs: Path  # the folder of the programs that do less
    journals: Journals
    rounds: int
    report: Report

    def start_server(self, journal):
        return Child([self.server], journal.home)

    def start_limit(self, journal, *options):
        """The program that only reads the files."""
        return Child([self.programs / "bench_limit", journal.folder, *options], journal.home)


class Measurement(NamedTuple):
    """One of the runner's measurements, which can be chosen by its name."""

    name: str
    quick: bool  # whether a quick run has time for it
    measure: Callable[[Run], None]


class Search(NamedTuple):
    """One search, by the server and by ripgrep."""

    name: str
    line: bytes  # for the server
    pattern: str | None  # for ripgrep: the word as it is written
    finds: bool | None  # whether an entry holds it, where that is known
    goal: Goal

    def check(self, found, program):
        """Times of searches that find different things can't be compared."""
        if self.finds not in (None, found):
            raise RuntimeError(f"{self.name}: {program} found {'something' if found else 'nothing'}")


def line_of(method, **params):
    """A request as a client sends it, with its line feed."""
    request = {"jsonrpc": "2.0", "id": 1, "method": method, **({"params": params} if params else {})}
    return json.dumps(request, ensure_ascii=False, separators=(",", ":")).encode() + b"\n"


def search_line(query, **others):
    return line_of("tools/call", name="search_entries", arguments={"query": query, **others})


INITIALIZE_LINE = line_of("initialize", protocolVersion="2025-06-18")
PING_LINE = line_of("ping")
RECENT_LINE = line_of("tools/call", name="list_recent", arguments={"days": 365})


def asking(server, search):
    """The contestant that searches with the server."""

    def ask():
        begin = time.perf_counter()
        reply = server.ask(search.line)
        seconds = time.perf_counter() - begin
        search.check(b"No entries" not in reply, "the server")
        return seconds

    return ask


def reading(limit):
    """The contestant that only reads the files."""
    return lambda: limit.seconds_to_answer(b"\n")


def ripgrep(threads, search, journal):
    """The contestant that searches with ripgrep: -j1 is one thread, -j0 as many as it likes.

    Its start counts, as it does for a person who types the command.
    """

    def run():
        begin = time.perf_counter()
        with Child(["rg", "--no-config", "-i", threads, "-l", "-F", "--", search.pattern, journal.folder],
                   journal.home) as rg:  # fmt: skip
            files = rg.finish()
        seconds = time.perf_counter() - begin
        search.check(files != b"", "rg")
        return seconds

    return run
