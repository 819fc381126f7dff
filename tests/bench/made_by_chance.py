"""Numbers by chance that are the same on every machine."""

_ALL_BITS = (1 << 64) - 1


def _numbers(state):
    """SplitMix64: one sequence of 64-bit numbers for each seed."""
    while True:
        state = (state + 0x9E3779B97F4A7C15) & _ALL_BITS
        mixed = (state ^ (state >> 30)) * 0xBF58476D1CE4E5B9 & _ALL_BITS
        mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EB & _ALL_BITS
        yield mixed ^ (mixed >> 31)


class Random:
    """The numbers of one seed."""

    def __init__(self, seed):
        self.next = _numbers(seed).__next__  # a function without arguments

    def below(self, end):
        """From 0 to `end` - 1; `end` must fit 32 bits."""
        return (self.next() >> 32) * end >> 32

    def words(self, words, count):
        """`count` of `words`, more often those near the front: below(below(len(words)) + 1).

        Most of the time that a journal takes is spent here, so it is written without those calls.
        """
        number, end = self.next, len(words)
        return [words[(((number() >> 32) * end >> 32) + 1) * (number() >> 32) >> 32] for _ in range(count)]
