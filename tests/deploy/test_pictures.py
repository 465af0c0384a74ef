"""The pictures show what the tables say, and readers find them."""

import re
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def test_pictures_are_as_new_as_their_tables():
    done = subprocess.run([ROOT / "docs/draw", "--check"], stderr=subprocess.PIPE, text=True)
    assert done.returncode == 0, done.stderr


def test_each_picture_is_in_a_document_with_a_sentence_below():
    shown = set()
    for document in [*ROOT.glob("docs/*.md"), *ROOT.glob("bench/*.md")]:
        places = re.findall(r"(?m)^!\[.+\]\((.+\.svg)\)\n\n[A-Z].+", document.read_text())
        shown.update((document.parent / place).resolve() for place in places)
    assert shown == set(ROOT.glob("docs/pictures/*.svg"))
