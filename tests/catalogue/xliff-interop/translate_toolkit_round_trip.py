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
# The narrow characters a line of each width holds; a unit says it in maxwidth.
MAXWIDTH = {"xs": "8", "s": "16", "m": "24", "l": "32", "xl": "40"}
TOO_WIDE = "Herzfrequenz viel zu hoch, sofort pruefen"


def run(*arguments):
    return subprocess.run(arguments, capture_output=True, check=False)


def fail(message):
    print(message, file=sys.stderr)
    sys.exit(1)


def source_texts(catalogue):
    """(ref, version, width) -> text of each en-US text of the catalogue."""
    texts = {}
    for element in ElementTree.parse(catalogue).getroot().iter(PARTICIPANT + "LocalizedText"):
        if element.get("Lang") == "en-US":
            texts[(element.get("Ref"), element.get("Version"), element.get("TextWidth"))] = element.text or ""
    return texts


def key_of(unit_id):
    """(ref, version, width) from an id VERSION.WIDTH.LINES.REFERENCE."""
    version, width, _, ref = unit_id.split(".", 3)
    return (urllib.parse.unquote(ref), version, None if width == "-" else width)


def translated(source, ref):
    # Every line keeps its line break, so that the number of lines stays the
    # one the unit's id gives; the heart-rate alarm gets one too wide.
    if ref == "alarm.hr.high" and "\n" not in source:
        return TOO_WIDE
    return "\n".join("it:" + line for line in source.split("\n"))


def main():
    tool, catalogue, work = sys.argv[1], sys.argv[2], Path(sys.argv[3])
    work.mkdir(parents=True, exist_ok=True)
    exported, saved, imported = work / "exported.xlf", work / "saved.xlf", work / "imported.xml"
    result = run(tool, "xliff", "export", "--from", "en-US", "--to", "it-IT", catalogue, "-o", str(exported))
    if result.returncode != 0:
        fail("export failed: %s" % result.stderr.decode())

    sources = source_texts(catalogue)
    store = xliff.xlifffile.parsefile(str(exported))
    units = [unit for unit in store.units if not unit.isheader()]
    if len(units) != len(sources):
        fail("%d units for %d source texts" % (len(units), len(sources)))
    expected = {}
    for unit in units:
        key = key_of(unit.getid())
        if sources.get(key) != unit.source or unit.xmlelement.get("resname") != key[0]:
            fail("unit %r: source %r, resname %r" % (unit.getid(), unit.source, unit.xmlelement.get("resname")))
        if unit.xmlelement.get("maxwidth") != MAXWIDTH.get(key[2]):
            fail("unit %r: maxwidth %r" % (unit.getid(), unit.xmlelement.get("maxwidth")))
        unit.target = translated(unit.source, key[0])
        expected[key] = unit.target
    if TOO_WIDE not in expected.values():
        fail("no unit of alarm.hr.high on one line")
    store.savefile(str(saved))

    result = run(tool, "xliff", "import", "--json", str(saved), "-o", str(imported))
    report = json.loads(result.stdout)
    kinds = [finding["kind"] for finding in report["findings"]]
    if result.returncode != 1 or kinds != ["width"]:
        fail("import: exit %d, findings %s" % (result.returncode, report["findings"]))

    texts = {}
    for element in ElementTree.parse(imported).getroot().iter(PARTICIPANT + "LocalizedText"):
        if element.get("Lang") != "it-IT":
            fail("imported text in %r" % element.get("Lang"))
        texts[(element.get("Ref"), element.get("Version"), element.get("TextWidth"))] = element.text or ""
    if texts != expected:
        fail("imported %s\nwanted %s" % (texts, expected))
    print("translate-toolkit round trip: %d units, %d texts imported, 1 too wide" % (len(units), len(texts)))


main()
