"""System calls and user instructions. They are the same on every machine: a check can fail when they grow.

Each is counted in a run that asks once and in a run that asks twice. The difference is one time without the start.
"""

import re

import goals
import hostile
from child import Child
from languages import ENGLISH
from measurement import Measurement, search_line


def measurements():
    yield Measurement("calls", True, _measure_calls)
    yield Measurement("instructions", True, _measure_instructions)
    yield Measurement("hostile-instructions", False, _measure_hostile_instructions)


def _measure_calls(run):
    """Three journals tell apart what entries, folders and the search itself take.

    The two larger ones have the same folders, the smallest has fewer. A word that no entry has is looked for in
    every entry. Of a word that many have, there are soon enough matches, and most entries are too old.
    """

    def count_for(entries, query):
        journal = run.journals.english(entries)
        notes = run.journals.cache / "calls.txt"
        strace = ["strace", "-f", "-c", "-U", "calls,name", "-o", notes]
        return entries, journal.folders(), _count_of_one(strace, notes, r"(\d+) total", [query], journal, run)

    def per_entry(small, large):
        return (large[2] - small[2]) / (large[0] - small[0])

    tiny, small, large = (count_for(entries, ENGLISH.absent) for entries in (100, 1_000, 10_000))
    for_folders = small[2] - tiny[2] - per_entry(small, large) * (small[0] - tiny[0])
    many = [count_for(entries, ENGLISH.common.query) for entries in (1_000, 10_000)]
    # To the tenth: now and then the allocator adds a call.
    run.report.add(goals.CALLS_PER_ENTRY, "calls", round(per_entry(small, large), 1))
    run.report.add(goals.CALLS_PER_OLD_ENTRY, "calls", round(per_entry(*many), 1))
    run.report.add(goals.CALLS_PER_FOLDER, "calls", round(for_folders / (small[1] - tiny[1]), 1))


def _measure_instructions(run):
    entries = 10_000
    instructions = _instructions([ENGLISH.rare.query], run.journals.english(entries), run)
    run.report.add(goals.INSTRUCTIONS, "instructions", instructions / entries)


def _measure_hostile_instructions(run):
    """The mean of a journal's queries: to count each alone would take a minute."""
    for name, queries in hostile.QUERIES.items():
        journal = run.journals.hostile(name, hostile.SMALL)
        size = sum(file.stat().st_size for file in journal.folder.rglob("*.md"))
        instructions = _instructions(queries.values(), journal, run)
        run.report.add(goals.HOSTILE_INSTRUCTIONS, f"hostile-{name}", instructions / len(queries) / size)


def _instructions(queries, journal, run):
    """How many instructions of the server's own it takes to search for each query once."""
    notes = run.journals.cache / "instructions.txt"
    # The one of valgrind's tools that writes nothing but its log, which is open from the start. The server gives up
    # opening files for writing (by Landlock, where it gets no filter), and valgrind is in the same process.
    valgrind = [run.programs / "bench_unfiltered", "valgrind", "--tool=lackey", "--basic-counts=yes",
                f"--log-file={notes}"]  # fmt: skip
    return _count_of_one(valgrind, notes, r"guest instrs: *([\d,]+)", queries, journal, run)


def _count_of_one(counter, notes, count_in_notes, queries, journal, run):
    """What `counter`, a command that runs the server and counts, finds in the file `notes` for each query once."""

    def count_of(times):
        with Child([*counter, run.server], journal.home) as server:
            for query in [*queries] * times:
                server.ask(search_line(query))
            server.finish()
        return int(re.search(count_in_notes, notes.read_text())[1].replace(",", ""))

    # A search that isn't counted comes first: a file that is not in memory takes another system call.
    with run.start_server(journal) as server:
        for query in queries:
            server.ask(search_line(query))
    return count_of(2) - count_of(1)
