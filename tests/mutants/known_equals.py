"""The faults that no test can tell from what is right, each with its reason."""


def read(path):
    """The reasons, by the names of the faults."""
    reasons = {}
    blocks = (block.splitlines() for block in path.read_text().split("\n\n"))
    for lines in (block for block in blocks if block and not block[0].startswith("#")):
        place, before, after, *reason = lines
        if not (before.startswith("- ") and after.startswith("+ ") and reason):
            raise ValueError(f"{path}: a place, a line with -, one with + and a reason must follow each other:\n{place}")
        file, _, nth = place.partition(", number ")
        reasons[(file, int(nth or 1), before[2:], after[2:])] = " ".join(reason)
    return reasons


def without_a_place(reasons, faults):
    """The names in `reasons` that no fault has any more: their lines have changed, or the rules have."""
    return sorted(set(reasons) - {fault.name for fault in faults})
