#!/usr/bin/python3
"""What scripts/guide leaves to Python.

guide.py scenario LANGUAGE FILE  prints the walk FILE with the texts of the program in the language
guide.py pictures FOLDER         makes docs/guide/pictures, and those of README in docs/pictures, from the pictures of the
                                 screen, FOLDER/LANGUAGE/NAME.png
guide.py check                   fails when a page names a picture that is not there or a text that the program does not
                                 show, or when the three pages differ in their sections, pictures or texts of the program

In a page <b class="button"> is what stands on a button or a box to tick, <b class="said"> what the program says.
"""

import html.parser
import itertools
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

GUIDE = pathlib.Path(__file__).resolve().parent.parent
ROOT = GUIDE.parent.parent
PICTURES = GUIDE / "pictures"
LANGUAGES = ["it", "en", "de"]
# The boxes of Qt's own making have its own texts.
BOX_TEXTS = {
    "it": {"Yes": "Si", "No": "No", "OK": "OK", "Show Details...": "Mostra dettagli..."},
    "en": {"Yes": "Yes", "No": "No", "OK": "OK", "Show Details...": "Show Details..."},
    "de": {"Yes": "Ja", "No": "Nein", "OK": "OK", "Show Details...": "Details einblenden..."},
}
WIDTH = 800  # pixels of a picture
# The pictures of README, and of the package that Linux software centres show, in the width those ask for.
FIRST_PAGE = {"transfer.png": "08-transfer-done.png", "optimise.png": "11-options.png"}
FIRST_PAGE_WIDTH = 880
MOST_BYTES = 60_000  # of a picture


def fail(text):
    sys.exit("guide: " + text)


def program_texts(language):
    """What the program's sources say, and what it shows in the language."""
    file = ROOT / "src" / "resources" / "language" / f"lang_{language}.ts"
    texts = {}
    for message in xml.etree.ElementTree.parse(file).getroot().iter("message"):
        texts[message.findtext("source")] = message.findtext("translation")
    return texts


def print_scenario(language, file):
    texts = {**program_texts(language), **BOX_TEXTS[language]}

    def translated(match):
        if match[1] not in texts:
            fail(f"{file}: the program has no text {match[1]!r}")
        return texts[match[1]].replace("\n", "\\n")

    print(re.sub(r"\{\{(.*?)\}\}", translated, pathlib.Path(file).read_text(encoding="utf-8")), end="")


def make_picture(source, target, width=WIDTH):
    """The windows without the empty screen around them, small."""
    from PIL import Image  # the check alone does without

    screen = Image.open(source).convert("RGB")
    windows = screen.crop(screen.getbbox())
    size = (width, round(windows.height * width / windows.width))
    windows.resize(size, Image.LANCZOS).save(target)
    for colours in (32, 24, 16):
        packed = subprocess.run(
            ["pngquant", "--speed", "1", "--strip", "--nofs", str(colours), "-"],
            input=target.read_bytes(), stdout=subprocess.PIPE, check=True).stdout
        if len(packed) <= MOST_BYTES:
            break
    target.write_bytes(packed)
    return len(packed)


def make_pictures(shots):
    total = 0
    for language in LANGUAGES:
        folder = PICTURES / language
        folder.mkdir(parents=True, exist_ok=True)
        for old in folder.glob("*.png"):
            old.unlink()
        for source in sorted((pathlib.Path(shots) / language).glob("*.png")):
            total += make_picture(source, folder / source.name)
    for name, source in FIRST_PAGE.items():
        make_picture(pathlib.Path(shots) / "en" / source, ROOT / "docs" / "pictures" / name, FIRST_PAGE_WIDTH)
    print(f"    {total // 1024} KiB of pictures in {PICTURES}")


class Page(html.parser.HTMLParser):
    """What of a page has to fit."""

    def __init__(self, language):
        super().__init__()
        self.language = language
        self.sections = []
        self.pictures = []
        self.links = []
        self.texts = []  # of the program
        self.faults = []
        self.in_text = False
        self.feed((GUIDE / f"{language}.html").read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if tag in ("section", "h1", "h2", "h3", "table", "tr", "ol", "ul", "li", "p", "img"):
            self.sections.append(f"{tag} {attributes.get('id', '')}".strip())
        if tag == "img":
            self.pictures.append(attributes.get("src", ""))
            if len(attributes.get("alt", "")) < 20:
                self.faults.append(f"{attributes.get('src')} is not described in words")
        for name in ("href", "src"):
            if name in attributes:
                self.links.append(attributes[name])
        if tag == "script" or any(name.startswith("on") for name in attributes):
            self.faults.append("a script")
        if tag == "html" and attributes.get("lang") != self.language:
            self.faults.append("another lang")
        if tag == "b" and attributes.get("class") in ("button", "said"):
            self.in_text = True
            self.texts.append("")

    def handle_endtag(self, tag):
        self.in_text = self.in_text and tag != "b"

    def handle_data(self, data):
        if self.in_text:
            self.texts[-1] += data

    def own_pictures(self):
        """Those of the page's own language, without the folder."""
        start = f"pictures/{self.language}/"
        return [picture[len(start):] for picture in self.pictures if picture.startswith(start)]


def sources_of(language):
    """For each text that the program shows in the language: what its sources say for it."""
    sources = {}
    for source, text in {**program_texts(language), **BOX_TEXTS[language]}.items():
        # A text may stand in several lines on the screen.
        sources.setdefault(" ".join(text.split()), set()).add(source)
    return sources


def faults_of(page, shown):
    ids = re.findall(r'\bid="([^"]*)"', (GUIDE / f"{page.language}.html").read_text(encoding="utf-8"))
    yield from page.faults
    yield from (f"the id {name} twice" for name in sorted(set(ids)) if ids.count(name) > 1)
    for link in sorted(set(page.links)):
        path, _, anchor = link.partition("#")
        if ":" in link:
            yield f"{link} lies outside the guide"
        elif path and not (GUIDE / path).is_file():
            yield f"{link} is not there"
        elif not path and anchor not in ids:
            yield f"{link} leads nowhere"
    for text in sorted(set(page.texts)):
        if text not in shown:
            yield f"the program does not show {text!r}"
    if len(page.own_pictures()) != len(page.pictures):
        yield "a picture of another language"


def differences(page, first):
    """What is another thing in a page than in the first one."""
    for here, there in itertools.zip_longest(page.sections, first.sections):
        if here != there:
            yield f"<{here}> where {first.language}.html has <{there}>"
            return
    if page.own_pictures() != first.own_pictures():
        yield f"other pictures than {first.language}.html"
    own, others = sources_of(page.language), sources_of(first.language)
    for here, there in itertools.zip_longest(page.texts, first.texts, fillvalue=""):
        if not own.get(here, set()) & others.get(there, set()):
            yield f"{here!r} where {first.language}.html has {there!r}"
            return


def check():
    faults = []
    pages = [Page(language) for language in LANGUAGES]
    for page in pages:
        found = [*faults_of(page, sources_of(page.language)), *differences(page, pages[0])]
        for made in sorted((PICTURES / page.language).glob("*.png")):
            if made.name not in page.own_pictures():
                found.append(f"does not show {made.name}")
            if made.stat().st_size > MOST_BYTES:
                found.append(f"{made.name} is larger than {MOST_BYTES} bytes")
        faults += [f"{page.language}.html: {fault}" for fault in found]
    if faults:
        fail("\n       ".join(["the pages do not fit:"] + faults))
    print(f"==> Right: {len(pages)} pages of the guide, {len(pages[0].pictures)} pictures and "
          f"{len(pages[0].texts)} texts of the program each")


if __name__ == "__main__":
    commands = {"scenario": print_scenario, "pictures": make_pictures, "check": check}
    commands[sys.argv[1]](*sys.argv[2:])
