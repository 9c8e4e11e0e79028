"""An XLIFF file exported by zalt-lts-catalogue, translated by another
program's XLIFF reader and writer, and imported again.

    translate_toolkit_round_trip.py TOOL CATALOGUE WORK_DIR

translate-toolkit's XLIFF store opens the export, finds a unit for each
source text with its id and maxwidth, fills every target and saves the file
its own way. The import must give exactly the texts filled in, keyed as the
source texts were, and report the one translation too wide for its width.
"""
import json
import subprocess
import sys
import urllib.parse
import xml.etree.ElementTree as ElementTree
from pathlib import Path

from translate.storage import xliff

PARTICIPANT = "{http://standards.ieee.org/downloads/11073/11073-10207-2017/participant}"
# The narrow characters a line of each width holds; a unit's maxwidth is for
# all its lines and the line breaks between them.
LINE_WIDTH = {"xs": 8, "s": 16, "m": 24, "l": 32, "xl": 40}
TOO_WIDE = "Herzfrequenz viel zu hoch"
TOO_WIDE_KEY = ("alarm.hr.high", "2", "xs", "1")


def run(*arguments):
    return subprocess.run(arguments, capture_output=True, check=False)


def fail(message):
    print(message, file=sys.stderr)
    sys.exit(1)


def texts_of(catalogue, language):
    """(ref, version, width, lines) -> text of each text of `language`; its
    texts have no line breaks but LF."""
    texts = {}
    for element in ElementTree.parse(catalogue).getroot().iter(PARTICIPANT + "LocalizedText"):
        if element.get("Lang") == language:
            text = element.text or ""
            key = (element.get("Ref"), element.get("Version"), element.get("TextWidth"), str(text.count("\n") + 1))
            texts[key] = text
    return texts


def key_of(unit_id):
    """(ref, version, width, lines) from an id VERSION.WIDTH.LINES.REFERENCE."""
    version, width, lines, ref = unit_id.split(".", 3)
    return (urllib.parse.unquote(ref), version, None if width == "-" else width, lines)


def translated(source, key):
    # The same widths and lines, other letters, so that a source read for
    # its target would show; one translation is too wide for its width.
    return TOO_WIDE if key == TOO_WIDE_KEY else source.swapcase()


def main():
    tool, catalogue, work = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    work.mkdir(parents=True, exist_ok=True)
    exported, saved, imported = work / "exported.xlf", work / "saved.xlf", work / "imported.xml"
    result = run(tool, "xliff", "export", "--from", "en-US", "--to", "it-IT", catalogue, "-o", str(exported))
    if result.returncode != 0:
        fail("export failed: %s" % result.stderr.decode())

    sources = texts_of(catalogue, "en-US")
    store = xliff.xlifffile.parsefile(str(exported))
    units = [unit for unit in store.units if not unit.isheader()]
    if len(units) != len(sources):
        fail("%d units for %d source texts" % (len(units), len(sources)))
    expected = {}
    for unit in units:
        key = key_of(unit.xmlelement.get("id"))
        if sources.get(key) != unit.source or unit.xmlelement.get("resname") != key[0]:
            fail("unit %r: source %r, resname %r" % (unit.getid(), unit.source, unit.xmlelement.get("resname")))
        lines = int(key[3])
        maxwidth = str(lines * LINE_WIDTH[key[2]] + lines - 1) if key[2] in LINE_WIDTH else None
        if unit.xmlelement.get("maxwidth") != maxwidth:
            fail("unit %r: maxwidth %r" % (unit.getid(), unit.xmlelement.get("maxwidth")))
        unit.target = translated(unit.source, key)
        expected[key] = unit.target
    if TOO_WIDE_KEY not in expected:
        fail("no unit %s" % (TOO_WIDE_KEY,))
    store.savefile(str(saved))

    result = run(tool, "xliff", "import", "--json", str(saved), "-o", str(imported))
    report = json.loads(result.stdout)
    kinds = [finding["kind"] for finding in report["findings"]]
    if result.returncode != 1 or kinds != ["width"] or "TextWidth 'xs'" not in report["findings"][0]["message"]:
        fail("import: exit %d, findings %s" % (result.returncode, report["findings"]))

    texts = texts_of(str(imported), "it-IT")
    if texts != expected:
        fail("imported %s\nwanted %s" % (texts, expected))
    print("translate-toolkit round trip: %d units, %d texts imported, one too wide" % (len(units), len(texts)))


main()
