"""What a person waits for after a restart: no file of the journal is in memory."""

import os
import sys
from functools import partial

import goals
from child import Child
from languages import ENGLISH
from measurement import RECENT_LINE, Measurement, Search, asking, reading, ripgrep, search_line
from report import milliseconds
from rounds import median, median_ratio, take_turns


def measurements():
    word = ENGLISH.rare
    for search in (
        Search("cold: English 10,000", search_line(word.query), word.written, True, goals.COLD),
        Search("cold: list_recent", RECENT_LINE, word.written, True, goals.COLD_RECENT),
    ):
        yield Measurement(search.name, False, partial(_compare, search))


def _compare(search, run):
    try:
        _empty_page_cache()
    except PermissionError:
        print(f"{search.name}: skipped, only root can empty the page cache", file=sys.stderr)
        return
    journal = run.journals.english(10_000)
    empty = run.journals.cache / "empty"
    empty.mkdir(exist_ok=True)

    def load_ripgrep():
        with Child(["rg", "--no-config", "x", empty], empty) as rg:
            rg.finish()

    with run.start_server(journal) as server, run.start_limit(journal) as limit:
        contestants = [
            _from_disk(asking(server, search)),
            _from_disk(reading(limit)),
            _from_disk(ripgrep("-j0", search, journal), load_ripgrep),
            _from_disk(ripgrep("-j8", search, journal), load_ripgrep),
        ]
        times = take_turns(contestants, run.rounds)
    server_times, limit_times, *rg_times = times
    run.report.add(search.goal, search.name, median_ratio(server_times, min(rg_times, key=median)))
    run.report.cold.append([search.name, *map(milliseconds, times)])
    if search.goal == goals.COLD:
        labels = ("rg, eight threads", "this server", "reading the files alone")
        run.report.cold_bars = dict(zip(labels, map(median, (rg_times[1], server_times, limit_times))))


def _empty_page_cache():
    os.sync()  # files that wait to be written stay in memory
    with open("/proc/sys/vm/drop_caches", "w", encoding="ascii") as control:
        control.write("3")


def _from_disk(contestant, load_program=lambda: None):
    """`contestant` with the files on the disk, and its program in memory: the servers run all the time."""

    def run():
        _empty_page_cache()
        load_program()
        return contestant()

    return run
