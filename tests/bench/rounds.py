"""How programs that are compared take turns, and what their times say.

A contestant is a function that does its work once and returns the seconds that it took.
"""

from statistics import median_high as median

__all__ = ["median", "median_ratio", "middle_half", "ratios", "take_turns"]


def take_turns(contestants, rounds):
    """The seconds of each contestant, round by round.

    Every other round runs in reverse: whatever slows the machine for a while slows all of them. A round that doesn't
    count comes first and warms the caches.
    """
    for contestant in contestants:
        contestant()
    times = [[] for _ in contestants]
    for number in range(rounds):
        turns = list(zip(contestants, times))
        for contestant, own_times in turns if number % 2 == 0 else reversed(turns):
            own_times.append(contestant())
    return times


def ratios(times, beside):
    """Round by round, how many times as long the one took as the other."""
    return [one / other for one, other in zip(times, beside)]


def median_ratio(times, beside):
    return median(ratios(times, beside))


def middle_half(values):
    """The bounds of the middle half of the values."""
    ordered = sorted(values)
    return ordered[len(ordered) // 4], ordered[len(ordered) * 3 // 4]
