"""The process itself: its start, its memory, and how fast it answers lines."""

import threading
import time
from functools import partial

import goals
import hostile
from child import Child
from languages import ENGLISH
from measurement import INITIALIZE_LINE, PING_LINE, RECENT_LINE, Measurement, search_line
from rounds import median, median_ratio, take_turns

PINGS = 200_000
LONG_LINE = 64 << 20  # bytes


def start_measurements():
    yield Measurement("start", True, _measure_start)
    yield Measurement("first-search", True, _measure_first_search)


def memory_measurements():
    yield Measurement("memory-10000", True, partial(_measure_memory, 10_000))
    yield Measurement("memory-100000", False, partial(_measure_memory, 100_000))
    yield Measurement("memory-big-bodies", False, _measure_big_bodies)


def line_measurements():
    yield Measurement("pings", True, _measure_pings)
    yield Measurement("long-line", True, _measure_long_line)


def _measure_start(run):
    journal = run.journals.english(1_000)

    def starting():
        begin = time.perf_counter()
        with run.start_server(journal) as server:
            server.ask(INITIALIZE_LINE)
            return time.perf_counter() - begin

    _compare_with_hello(goals.START, "start", starting, run)


def _measure_first_search(run):
    """What it adds to a later one."""
    journal = run.journals.english(1_000)

    def searching():
        with run.start_server(journal) as server:
            server.ask(INITIALIZE_LINE)
            first, *later = [server.seconds_to_answer(search_line(ENGLISH.common.query)) for _ in range(4)]
        return first - median(later)

    _compare_with_hello(goals.FIRST_SEARCH, "first-search", searching, run)


def _compare_with_hello(goal, name, contestant, run):
    def saying_hello():
        begin = time.perf_counter()
        with Child([run.programs / "bench_hello"], run.journals.cache) as hello:
            hello.ask(b"")
            return time.perf_counter() - begin

    # These take a millisecond or two: many rounds cost little and calm the figure.
    times = take_turns([contestant, saying_hello], 8 * run.rounds)
    run.report.add(goal, name, median_ratio(*times))


def _measure_memory(entries, run):
    journal = run.journals.english(entries)
    name = f"memory-{entries}"
    _measure_peak(name, journal, search_line(ENGLISH.rare.query), run)
    with run.start_server(journal) as server:
        for line in (search_line(ENGLISH.rare.query), search_line(ENGLISH.common.query), RECENT_LINE):
            server.ask(line)
        time.sleep(0.2)
        run.report.add(goals.IDLE_MEMORY, name, server.memory("VmRSS"))
        run.report.add(goals.IDLE_OWN_MEMORY, name, server.memory("RssAnon"))


def _measure_big_bodies(run):
    for name, queries in hostile.QUERIES.items():
        query = next(iter(queries.values()))
        _measure_peak(f"memory-{name}", run.journals.hostile(name, hostile.BIG), search_line(query), run)


def _measure_peak(name, journal, line, run):
    """Each in a new process: a peak stays for good."""
    with run.start_server(journal) as server:
        server.ask(line)
        peak = server.memory("VmHWM")
    run.report.add(goals.PEAK_MEMORY, name, peak - 2 * journal.largest_file() / 1e6)


def _measure_pings(run):
    lines = PING_LINE * PINGS
    home = run.journals.cache
    with Child([run.server], home) as server, Child([run.programs / "bench_echo"], home) as echo:
        reply_size = len(server.ask(PING_LINE))
        contestants = [partial(_seconds_to_answer, server, lines, reply_size * PINGS),
                       partial(_seconds_to_answer, echo, lines, len(lines))]  # fmt: skip
        contestants[0]()
        before = server.memory("VmRSS")
        server_times, echo_times = take_turns(contestants, run.rounds)
        run.report.add(goals.PINGS, "pings", median_ratio(echo_times, server_times))
        run.report.add(goals.PING_MEMORY, "ping-memory", (server.memory("VmRSS") - before) / (run.rounds + 1))


def _seconds_to_answer(child, lines, answer_size):
    """Writes while it reads: neither side may wait for the other to empty its pipe."""
    begin = time.perf_counter()
    writer = threading.Thread(target=child.write, args=[lines])
    writer.start()
    child.skip(answer_size)
    writer.join()
    return time.perf_counter() - begin


def _measure_long_line(run):
    opening = PING_LINE.removesuffix(b"}\n") + b',"padding":"'  # a member that nobody reads
    line = opening.ljust(LONG_LINE - 3, b"x") + b'"}\n'
    with Child([run.server], run.journals.cache) as server:
        answering = partial(server.seconds_to_answer, line)
        times = take_turns([answering, partial(_seconds_for_cat, line, run)], run.rounds)
        run.report.add(goals.LONG_LINE, "long-line", median_ratio(*times))
        run.report.add(goals.LONG_LINE_MEMORY, "long-line", server.memory("VmHWM") * 1e6 / LONG_LINE)


def _seconds_for_cat(line, run):
    """Once through a pipe and away. The clock starts when cat has started."""
    with Child(["sh", "-c", "exec cat > /dev/null"], run.journals.cache) as cat:
        time.sleep(0.02)
        begin = time.perf_counter()
        cat.write(line)
        cat.finish()
        return time.perf_counter() - begin
