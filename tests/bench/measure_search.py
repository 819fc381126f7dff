"""Searches with the files in memory, beside reading the files alone and beside a plain text search."""

from contextlib import ExitStack
from functools import partial

import goals
import hostile
from journals import TAG, Journals
from languages import CJK, ENGLISH, MIXED
from measurement import RECENT_LINE, Measurement, Search, asking, reading, ripgrep, search_line
from report import figure, milliseconds
from rounds import median, median_ratio, middle_half, ratios, take_turns


def measurements():
    english, small = partial(Journals.english, entries=10_000), partial(Journals.english, entries=1_000)
    yield Measurement("limit", True, _measure_limit)
    yield from _comparisons(_searches(ENGLISH, "english", goals.SEARCH_ENGLISH), english, quick=True)
    yield from _comparisons([_tag_search("english", goals.SEARCH_ENGLISH)], english, quick=True)
    yield from _comparisons(_searches(ENGLISH, "small", goals.SEARCH_SMALL), small, quick=True)
    yield from _comparisons([Search("recent", RECENT_LINE, None, True, goals.RECENT)], english, quick=True)
    for kind, languages, journal, goal in (
        ("mixed", MIXED, Journals.mixed, goals.SEARCH_MIXED),
        ("cjk", CJK, Journals.cjk, goals.SEARCH_CJK),
    ):
        yield from _comparisons(_searches(ENGLISH, f"{kind}-ascii", goal), journal)
        yield from _comparisons([_tag_search(kind, goal)], journal)
        for language in languages:
            searches = _searches(language, f"{kind}-{language.name}", goal)
            yield from _comparisons(searches, journal, quick=language.name == "german")
    yield Measurement("growth", False, _measure_growth)


def hostile_measurements():
    for name in hostile.QUERIES:
        yield Measurement(f"hostile-{name}", False, partial(_measure_hostile, name))


def _searches(language, name, goal):
    yield Search(f"{name}-rare", search_line(language.rare.query), language.rare.written, True, goal)
    yield Search(f"{name}-common", search_line(language.common.query), language.common.written, True, goal)
    yield Search(f"{name}-absent", search_line(language.absent), language.absent, False, goal)


def _tag_search(name, goal):
    return Search(f"{name}-tag", search_line("", tag=TAG), TAG, True, goal)


def _comparisons(searches, journal_of, quick=False):
    for search in searches:
        yield Measurement(
            search.name, quick, lambda run, search=search: _compare(search, journal_of(run.journals), run)
        )


def _compare(search, journal, run):
    with (
        run.start_server(journal) as server,
        run.start_limit(journal) as limit,
        run.start_limit(journal, "--in-sandbox") as sandboxed,
    ):
        contestants = [asking(server, search), reading(limit), reading(sandboxed)]
        if search.pattern is not None:
            contestants += [ripgrep(threads, search, journal) for threads in ("-j1", "-j2")]
        # Short searches need more rounds for as steady a median, and have the time.
        rounds = run.rounds * (5 if search.goal == goals.SEARCH_SMALL else 1)
        server_times, limit_times, sandboxed_times, *rg_times = take_turns(contestants, rounds)

    run.report.add(search.goal, search.name, median_ratio(server_times, limit_times))
    beside_rg = [median_ratio(server_times, times) for times in rg_times]
    for goal, ratio in zip((goals.BESIDE_ONE_THREAD, goals.BESIDE_TWO_THREADS), beside_rg):
        run.report.add(goal, search.name, ratio)
    row = _beside_limit(search.name, server_times, limit_times)
    row += map(figure, [median_ratio(server_times, sandboxed_times), *beside_rg])
    run.report.searches.append(row)
    if search.name == "english-rare":
        labels = ("reading the files alone", "this server", "rg, two threads", "rg, one thread")
        all_times = (limit_times, server_times, rg_times[1], rg_times[0])
        run.report.warm_bars = dict(zip(labels, map(median, all_times)))


def _beside_limit(name, times, limit_times):
    """The first cells of a row of the table of searches."""
    beside_limit = ratios(times, limit_times)
    lower, upper = map(figure, middle_half(beside_limit))
    return [name, milliseconds(times), figure(median(beside_limit)), f"{lower} to {upper}"]


def _measure_hostile(name, run):
    journal = run.journals.hostile(name, hostile.BIG)
    for title, query in hostile.QUERIES[name].items():
        search = Search(f"hostile-{name}: {title}", search_line(query), None, None, goals.HOSTILE)
        _compare(search, journal, run)


def _measure_limit(run):
    """What the sandbox alone costs, and by how much two equal programs differ on this machine."""
    journal = run.journals.english(10_000)
    with (
        run.start_limit(journal) as limit,
        run.start_limit(journal) as again,
        run.start_limit(journal, "--in-sandbox") as sandboxed,
    ):
        contestants = [reading(limit), reading(again), reading(sandboxed)]
        times, again_times, sandboxed_times = take_turns(contestants, 3 * run.rounds)
    run.report.add(goals.SANDBOXED_READING, "limit", median_ratio(sandboxed_times, times))
    run.report.searches.append(_beside_limit("reading alone, again", again_times, times))
    run.report.searches.append(_beside_limit("reading alone, in the sandbox", sandboxed_times, times))


def _measure_growth(run):
    """What an entry costs more in a journal ten times as large, without the limit's own growth."""
    sizes = (1_000, 10_000, 100_000)
    search, *_ = _searches(ENGLISH, "growth", goals.GROWTH)
    with ExitStack() as children:
        contestants = []
        for journal in map(run.journals.english, sizes):
            server = children.enter_context(run.start_server(journal))
            limit = children.enter_context(run.start_limit(journal))
            contestants += [asking(server, search), reading(limit), ripgrep("-j1", search, journal)]
        times = take_turns(contestants, run.rounds)
    # Of each size: the times of the server, of the limit and of ripgrep
    small, middle, large = times[0:3], times[3:6], times[6:9]
    server_growth, limit_growth = ratios(large[0], middle[0]), ratios(large[1], middle[1])
    run.report.add(goals.GROWTH, "growth", median_ratio(server_growth, limit_growth))
    for size, of_size in zip(sizes, (small, middle, large)):
        run.report.growth.append([str(size), *map(milliseconds, of_size)])
