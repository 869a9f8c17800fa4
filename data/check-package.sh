#!/bin/sh
# Builds Velto's Debian package from a build folder, or installs into a scratch folder where the
# packaging tools are missing, and checks that everything a desktop needs is in it and valid.
# Usage: check-package.sh BUILD_DIR
set -eu
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root
fail=0
complain() { echo "FAIL: $*"; fail=1; }

if command -v cpack >/dev/null && command -v dpkg-deb >/dev/null; then
    (cd "$build" && cpack -G DEB -B "$work/package") >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; exit 1; }
    deb=$(ls "$work"/package/*.deb)
    dpkg-deb -c "$deb" | awk '{ print $6 }' | sed 's|^\./|/|' >"$work/list"
    dpkg-deb -x "$deb" "$root"
    depends=$(dpkg-deb -f "$deb" Depends)
    for package in libsqlite3-0 libqt6quick6 libqt6dbus6 qml6-module-qtquick-controls qml6-module-qtquick-layouts \
                   qml6-module-qtquick-pdf; do
        echo "$depends" | grep -Eq "(^|, )$package( |,|$)" || complain "Depends lacks $package: $depends"
    done
    dpkg-deb -f "$deb" Recommends | grep -q python3-nautilus || complain "python3-nautilus is not recommended"
else
    echo "no cpack or dpkg-deb here: checking an install into a scratch folder instead"
    DESTDIR=$root cmake --install "$build" --prefix /usr >"$work/install.log"
    (cd "$root" && find . ! -type d | sed 's|^\.||') >"$work/list"
fi

for path in \
    /usr/bin/velto \
    /usr/bin/velto-probe \
    /usr/share/applications/io.quillmere.Velto.desktop \
    /usr/share/metainfo/io.quillmere.Velto.metainfo.xml \
    /usr/share/dbus-1/services/io.quillmere.Velto.service \
    /usr/share/icons/hicolor/scalable/apps/io.quillmere.Velto.svg \
    /usr/share/icons/hicolor/symbolic/apps/io.quillmere.Velto-symbolic.svg \
    /usr/share/icons/hicolor/48x48/apps/io.quillmere.Velto.png \
    /usr/share/icons/hicolor/256x256/apps/io.quillmere.Velto.png \
    /usr/share/icons/hicolor/scalable/emblems/emblem-velto-not-started.svg \
    /usr/share/icons/hicolor/scalable/emblems/emblem-velto-in-progress.svg \
    /usr/share/icons/hicolor/scalable/emblems/emblem-velto-waiting.svg \
    /usr/share/icons/hicolor/scalable/emblems/emblem-velto-complete.svg \
    /usr/share/kio/servicemenus/io.quillmere.Velto.AddToBoard.desktop \
    /usr/share/nautilus-python/extensions/velto_badges.py \
    /usr/share/nautilus-python/extensions/velto_badges_logic.py
do
    grep -qx "$path" "$work/list" || complain "$path is not installed"
done
# Only the two programs go to the path; build tools stay behind.
grep '^/usr/bin/.*[^/]$' "$work/list" | grep -vxE '/usr/bin/velto(-probe)?' | while read -r extra; do
    echo "FAIL: $extra is installed"; done | grep . && fail=1

share=$root/usr/share
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$share/applications/io.quillmere.Velto.desktop" || complain "the desktop entry is not valid"
else
    complain "desktop-file-validate is missing (package desktop-file-utils)"
fi
if command -v appstreamcli >/dev/null; then
    appstreamcli validate --no-net "$share/metainfo/io.quillmere.Velto.metainfo.xml" >"$work/appstream.log" 2>&1 \
        || { cat "$work/appstream.log"; complain "the metainfo is not valid"; }
else
    complain "appstreamcli is missing (package appstream)"
fi
# Whatever names the program names the installed one.
grep -qx 'Exec=/usr/bin/velto' "$share/dbus-1/services/io.quillmere.Velto.service" \
    || complain "the bus service does not start /usr/bin/velto"
grep -qx 'Exec="/usr/bin/velto" %F' "$share/kio/servicemenus/io.quillmere.Velto.AddToBoard.desktop" \
    || complain "Dolphin's entry does not call /usr/bin/velto"
python3 - "$share/nautilus-python/extensions/velto_badges.py" <<'PYTHON' || complain "the Files extension is not valid Python calling /usr/bin/velto"
import ast, sys
tree = ast.parse(open(sys.argv[1], encoding="utf-8").read())
values = [node.value.value for node in tree.body
          if isinstance(node, ast.Assign) and node.targets[0].id == "VELTO_EXECUTABLE"]
sys.exit(0 if values == ["/usr/bin/velto"] else 1)
PYTHON
exit $fail
