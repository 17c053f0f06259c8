#!/bin/sh
# Brings data/translations up to date with the texts of the sources: new texts are added, unfinished, and texts that are
# gone leave. With --check nothing is changed: it names every text that a language has not or that is unfinished there,
# and fails if there is any.
set -eu
cd "$(dirname "$0")/.."
case ${1-} in
    '' | --check) ;;
    *) echo "usage: tools/translations.sh [--check]" >&2; exit 2 ;;
esac
PATH=/usr/lib/qt6/bin:$PATH

# update FILES...: the texts of the sources into these files. Without line numbers, so that moving code changes nothing.
# Texts of a class that lupdate does not know stand under another context than the program seeks them in, and would never
# be found: tr() needs a class with Q_OBJECT, elsewhere QCoreApplication::translate and QT_TRANSLATE_NOOP serve.
update() {
    told=$(lupdate -silent -no-obsolete -locations none -I src src -ts "$@" 2>&1) || { echo "$told" >&2; exit 1; }
    ! echo "$told" | grep -e 'Qualifying with unknown' -e 'lacks Q_OBJECT' >&2 || exit 1
}

if [ $# = 0 ]; then
    update data/translations/*.ts
    exit
fi
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT
cp data/translations/*.ts "$copies"
update "$copies"/*.ts
python3 - "$copies"/*.ts <<'PYTHON'
import pathlib
import sys
import xml.etree.ElementTree

missing = 0
for path in sys.argv[1:]:
    for context in xml.etree.ElementTree.parse(path).iter("context"):
        for message in context.iter("message"):
            translation = message.find("translation")
            forms = [form.text for form in translation.iter("numerusform")] or [translation.text]
            if translation.get("type") == "unfinished" or not all(forms):
                missing += 1
                print(f"{pathlib.Path(path).name}: {context.findtext('name')}: {message.findtext('source')}")
if missing:
    print(f"{missing} texts are not translated: tools/translations.sh, then the .ts files", file=sys.stderr)
sys.exit(1 if missing else 0)
PYTHON
