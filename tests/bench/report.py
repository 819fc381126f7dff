"""What a run finds out, and the tables that show it."""

import sys
from typing import NamedTuple

from rounds import median


class Case(NamedTuple):
    """One measured value of a goal."""

    name: str
    value: float


class Report:
    """The figures of a run, in the order in which they come."""

    def __init__(self):
        self.cases = {}  # by goal
        # Tables: a row of headings, then the others. Cells that are left out at the end of a row are empty.
        self.searches = [["search", "ms", "x limit", "middle half", "x limit in sandbox", "x rg -j1", "x rg -j2"]]
        self.cold = [["files from the disk", "server, ms", "reading alone, ms", "rg, ms", "rg -j8, ms"]]
        self.growth = [["entries", "server, ms", "reading alone, ms", "rg -j1, ms"]]
        # What the drawing compares: the seconds of one search, by label
        self.warm_bars = {}
        self.cold_bars = {}

    def add(self, goal, name, value):
        """Notes a figure and shows it on standard error: a run takes minutes."""
        print(f"{name}: {figure(value)} {goal.unit} (goal {_bound(goal.goal)})", file=sys.stderr)
        self.cases.setdefault(goal, []).append(Case(name, value))

    def meets_all_goals(self):
        return all(goal.reaches(case.value, goal.goal) for goal, cases in self.cases.items() for case in cases)

    def text(self):
        """The drawing, the goals with their worst cases, and the other tables that have rows: Markdown."""
        tables = [self._goals(), *(table for table in (self.searches, self.cold, self.growth) if len(table) > 1)]
        return self._drawing() + "\n".join(map(_aligned, tables))

    def _goals(self):
        rows = [["measure", "value", "unit", "goal", "stretch", "reached", "worst of"]]
        for goal, cases in self.cases.items():
            worst = (min if goal.higher_is_better else max)(cases, key=lambda case: case.value)
            rows.append(
                [goal.name, figure(worst.value), goal.unit, _bound(goal.goal),
                 "" if goal.stretch == goal.goal else _bound(goal.stretch), _verdict(goal, worst.value),
                 f"{len(cases)}: {worst.name}" if len(cases) > 1 else ""]
            )  # fmt: skip
        return rows

    def _drawing(self):
        """Each kind of files has a scale of its own."""
        if not self.warm_bars or not self.cold_bars:
            return ""
        return (
            f"```\nOne search of 10,000 entries. Files in memory:\n{_drawn(self.warm_bars)}"
            f"\nThe same, files on the disk:\n{_drawn(self.cold_bars)}```\n\n"
        )


def figure(value):
    """With as many digits as a reader can use: 3512, 12.3, 1.234."""
    return f"{value:.{0 if value >= 1000 else 1 if value >= 10 else 2 if value >= 2 else 3}f}"


def milliseconds(times):
    """The median of `times`, which are in seconds."""
    return figure(median(times) * 1000)


def _bound(value):
    return f"{value:.{0 if value == int(value) else 2}f}"


def _verdict(goal, value):
    if not goal.reaches(value, goal.goal):
        return "missed"
    return "stretch" if goal.stretch != goal.goal and goal.reaches(value, goal.stretch) else "goal"


def _aligned(rows):
    """A Markdown table that reads as well in a terminal."""
    headings, *rest = [row + [""] * (len(rows[0]) - len(row)) for row in rows]
    widths = [max(3, *map(len, column)) for column in zip(headings, *rest)]
    lines = [headings, ["-" * width for width in widths], *rest]
    return "".join("| " + " | ".join(map(str.ljust, line, widths)) + " |\n" for line in lines)


def _drawn(bars):
    longest = max(bars.values())
    return "".join(
        f"  {label:25}{'#' * int(50 * seconds / longest)} {milliseconds([seconds])} ms\n"
        for label, seconds in bars.items()
    )
