"""Figures can be compared only where everybody measures the same journals, with as much to find in them as is said."""

import hashlib
import statistics
import sys
import unittest

sys.dont_write_bytecode = True

from journals import TAG, files  # noqa: E402
from languages import CJK, ENGLISH, MIXED  # noqa: E402

DAY = 20_000  # in October 2024
ENTRIES = 1_000


def made(languages):
    return list(files(languages, ENTRIES, DAY))


def texts_with(word, journal):
    return sum(word.encode() in text for _, text in journal)


class JournalsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.journals = {languages: made(languages) for languages in ((ENGLISH,), MIXED, CJK)}

    def test_are_the_same_on_every_machine(self):
        fingerprints = [
            hashlib.sha256(b"".join(path.encode() + text for path, text in journal)).hexdigest()[:16]
            for journal in self.journals.values()
        ]
        self.assertEqual(fingerprints, ["03aeb1a7d038cbfc", "21d22b5886ff3907", "c6e7fad3b42b4f6d"])

    def test_have_the_english_words_and_the_tag_in_their_shares(self):
        for languages, journal in self.journals.items():
            with self.subTest(languages=[language.name for language in languages]):
                self.assertEqual(texts_with(ENGLISH.rare.written, journal), ENTRIES // 1000)
                self.assertEqual(texts_with(ENGLISH.common.written, journal), ENTRIES * 3 // 10)
                self.assertEqual(texts_with(ENGLISH.absent, journal), 0)
                self.assertEqual(texts_with(TAG, journal), ENTRIES // 10)

    def test_have_the_words_of_each_language_in_their_shares_of_its_entries(self):
        for languages, journal in self.journals.items():
            entries = ENTRIES / len(languages)
            for language in languages:
                with self.subTest(language=language.name):
                    self.assertAlmostEqual(texts_with(language.rare.written, journal), entries / 1000, delta=1)
                    self.assertAlmostEqual(texts_with(language.common.written, journal), entries * 0.3, delta=2)
                    self.assertEqual(texts_with(language.absent, journal), 0)

    def test_have_files_of_log_normal_size(self):
        front_matter = 110
        sizes = [len(text) - front_matter for _, text in self.journals[(ENGLISH,)]]
        self.assertAlmostEqual(statistics.median(sizes), 1500, delta=150)
        self.assertAlmostEqual(statistics.mean(sizes), 2400, delta=300)

    def test_are_in_the_order_of_time_over_twenty_years(self):
        paths = [path for path, _ in self.journals[(ENGLISH,)]]
        self.assertEqual(paths, sorted(paths))
        self.assertEqual(paths[0][:5], "2004/")
        self.assertEqual(paths[-1][:5], "2024/")


if __name__ == "__main__":
    unittest.main()
