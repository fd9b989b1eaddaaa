"""The manual: both languages tell the same chapters, every picture and link leads somewhere, nothing leads outside."""

import unittest
from html.parser import HTMLParser
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
LARGEST_PICTURE = 150_000


class Page(HTMLParser):
    def __init__(self, folder):
        super().__init__()
        self.folder = PROJECT / folder
        self.chapters, self.links, self.pictures, self.open = [], [], [], []
        self.feed((self.folder / "index.html").read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        if tag == "section":
            self.chapters.append(values["id"])
        if tag == "a":
            self.links.append(values["href"])
        if tag == "img":
            self.pictures.append((values["src"], int(values["width"]), int(values["height"])))
        if tag not in ("meta", "img", "br", "link"):
            self.open.append(tag)

    def handle_endtag(self, tag):
        if self.open.pop() != tag:
            raise AssertionError(f"</{tag}> at {self.getpos()} closes something else")


class Manual(unittest.TestCase):
    def test_both_languages_tell_the_same_in_whole_pages(self):
        english, japanese = pages = Page("help-e"), Page("help")
        self.assertEqual(english.chapters, japanese.chapters)
        self.assertEqual([source for source, *_ in english.pictures], [source for source, *_ in japanese.pictures])
        for page in pages:
            self.assertEqual(page.open, [])
            self.assertEqual(page.links, ["#" + chapter for chapter in page.chapters])
            for source, width, height in page.pictures:
                picture = (page.folder / source).read_bytes()
                size = tuple(int.from_bytes(picture[at : at + 4], "big") for at in (16, 20))  # of the PNG header
                self.assertEqual(size, (width, height), f"{page.folder}/{source}")
                self.assertLess(len(picture), LARGEST_PICTURE, f"{page.folder}/{source}")


if __name__ == "__main__":
    unittest.main(argv=["test_manual"])
