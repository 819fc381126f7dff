"""Every figure with a goal. The first table of the performance page has a row for each."""

from typing import NamedTuple


class Goal(NamedTuple):
    """What is measured, in which unit, what it must be, and what it could be."""

    name: str
    unit: str
    goal: float
    stretch: float  # the same as the goal where nothing better is known
    higher_is_better: bool = False

    def reaches(self, value, bound):
        return value >= bound if self.higher_is_better else value <= bound


SEARCH_ENGLISH = Goal("search, 10,000 English entries", "x limit", 1.12, 1.08)
SEARCH_MIXED = Goal("search, 10,000 entries in seven languages", "x limit", 1.18, 1.12)
SEARCH_CJK = Goal("search, 10,000 Chinese and Japanese entries", "x limit", 1.18, 1.12)
BESIDE_ONE_THREAD = Goal("any of these beside rg -i -j1 -l", "x rg -j1", 0.62, 0.55)
BESIDE_TWO_THREADS = Goal("any of these beside rg -i -j2 -l", "x rg -j2", 1.05, 0.95)
SEARCH_SMALL = Goal("search, 1,000 English entries", "x limit", 1.20, 1.10)
RECENT = Goal("list_recent, 365 days of 20 years, 10,000 entries", "x limit", 1.15, 1.10)
COLD = Goal("search, files on the disk, beside the fastest rg -i -l", "x rg", 1.15, 1.0)
COLD_RECENT = Goal("list_recent, files on the disk, beside the same", "x rg", 1.15, 1.0)
SANDBOXED_READING = Goal("reading alone inside the sandbox", "x limit", 1.08, 1.05)
GROWTH = Goal("an entry among 100,000 beside one among 10,000", "x limit's growth", 1.05, 1.01)
HOSTILE = Goal("search of a hostile journal", "x limit", 12, 8)
START = Goal("start of the process to its first reply", "x hello world", 0.62, 0.45)
FIRST_SEARCH = Goal("first search beyond a later one", "x hello world", 1.0, 0.7)
PEAK_MEMORY = Goal("peak memory beyond twice the largest file", "MB", 12, 8.5)
IDLE_MEMORY = Goal("idle memory after searches, all", "MB", 10, 8)
IDLE_OWN_MEMORY = Goal("idle memory after searches, anonymous", "MB", 2, 0.7)
CALLS_PER_ENTRY = Goal("system calls an entry", "calls", 4, 4)
CALLS_PER_OLD_ENTRY = Goal("system calls an entry that is too old", "calls", 3, 3)
CALLS_PER_FOLDER = Goal("system calls a folder", "calls", 4, 4)
INSTRUCTIONS = Goal("user instructions an English entry", "instructions", 3000, 2000)
HOSTILE_INSTRUCTIONS = Goal("user instructions a byte of a hostile journal", "instructions", 20, 16)
PINGS = Goal("pipelined pings, rate", "x echo's rate", 0.4, 0.6, True)
PING_MEMORY = Goal("memory gained by 200,000 pings", "MB", 0.1, 0)
LONG_LINE = Goal("one line of 64 MiB", "x cat", 8, 5)
LONG_LINE_MEMORY = Goal("peak memory of that line", "x its size", 3, 3)
