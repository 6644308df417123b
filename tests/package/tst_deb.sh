#!/usr/bin/env bash
# The Debian package built from the build folder given: listed, unpacked into a temporary root
# and started from there. The installed admin tool makes a shop with the whole postal
# directory, the launcher makes one in the program folder on its first start, the menu entry
# and the AppStream data are valid, and the dependencies name what Qt loads at run time.
set -euo pipefail
build=$1
for tool in cpack dpkg-deb desktop-file-validate appstreamcli; do
    command -v "$tool" >/dev/null || { echo "SKIP: $tool is not installed"; exit 77; }
done
work=$(mktemp -d)
program=
trap '[ -z "$program" ] || kill $program 2>/dev/null; rm -rf "$work"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$work/out" >"$work/cpack.log" 2>&1) ||
    { cat "$work/cpack.log"; fail "cpack could not build the package"; }
deb=$(ls "$work"/out/mirvane_*.deb)
[[ $(basename "$deb") =~ ^mirvane_[0-9.]+_[a-z0-9]+\.deb$ ]] || fail "package name: $deb"

# Debian's own checks of a package: no error and no warning.
if command -v lintian >/dev/null; then
    lintian --fail-on error,warning --tag-display-limit 0 "$deb" >"$work/lintian.log" 2>&1 ||
        { cat "$work/lintian.log"; fail "lintian reports errors or warnings"; }
fi

dpkg-deb -c "$deb" >"$work/contents"
for path in usr/bin/mirvane usr/bin/mirvane-admin usr/lib/mirvane/mirvane \
    usr/lib/mirvane/mirvane-admin usr/lib/mirvane/jfm/PrnSan001.jfm \
    usr/lib/mirvane/jfm/PrnSan003.jfm usr/lib/mirvane/jfm/PrnSan004.jfm \
    usr/lib/mirvane/jfm/PrnSan009.jfm \
    usr/lib/mirvane/postal/utf_ken_all.csv.qz usr/share/applications/mirvane.desktop \
    usr/share/metainfo/jp.mirvane.Mirvane.metainfo.xml \
    usr/share/icons/hicolor/scalable/apps/mirvane.svg \
    usr/share/icons/hicolor/{16x16,32x32,48x48,64x64,128x128,256x256}/apps/mirvane.png \
    usr/share/doc/mirvane/copyright usr/share/doc/mirvane/changelog.gz \
    usr/share/man/man1/mirvane.1.gz usr/share/man/man1/mirvane-admin.1.gz; do
    grep -q " \./$path\$" "$work/contents" || fail "the package lacks /$path"
done
grep -Eq "^-rwxr-xr-x root/root .* \./usr/bin/mirvane\$" "$work/contents" ||
    fail "the launcher is not an executable of root's"

depends=$(dpkg-deb -f "$deb" Depends)
for package in libqt6widgets6 libqt6sql6 libqt6printsupport6 libqt6charts6 libqt6sql6-sqlite \
    libqt6sql6-psql qt6-qpa-plugins fonts-noto-cjk qt6-translations-l10n; do
    [[ ", $depends," =~ ,\ $package[\ ,] ]] || fail "Depends lacks $package: $depends"
done

root=$work/root
dpkg -x "$deb" "$root"
touch "$work/unpacked"
desktop-file-validate "$root/usr/share/applications/mirvane.desktop" ||
    fail "the desktop entry is not valid"
grep -qx "Name\[ja\]=Mirvane 顧客・売上管理" "$root/usr/share/applications/mirvane.desktop" ||
    fail "the desktop entry's Japanese name"
appstreamcli validate --no-net "$root/usr/share/metainfo/jp.mirvane.Mirvane.metainfo.xml" \
    >"$work/appstream.log" || { cat "$work/appstream.log"; fail "the AppStream data is not valid"; }

# The installed admin tool finds the postal directory in the installation folder.
"$root/usr/lib/mirvane/mirvane-admin" init "$work/shop" >"$work/init.log" 2>&1 ||
    { cat "$work/init.log"; fail "mirvane-admin init"; }
grep -Eq "郵便番号 1[0-9]{5} 件を取り込みました" "$work/init.log" ||
    { cat "$work/init.log"; fail "init did not load the national postal directory"; }
[ -f "$work/shop/DB/Mirvane.mdb" ] || fail "init made no database"

# The launcher's first start makes ~/Mirvane with its database, then the program runs there:
# the admin tool refuses to put a backup back into that folder while it runs. Nothing
# is written into the installation folder.
mkdir "$work/tmp"
export TMPDIR="$work/tmp"
unset MIRVANE_HOME
HOME="$work/home" timeout 60 "$root/usr/bin/mirvane" >"$work/start.log" 2>&1 &
program=$!
for _ in $(seq 300); do
    compgen -G "$work/tmp/mirvane-*.lock" >/dev/null && break
    kill -0 $program 2>/dev/null || { cat "$work/start.log"; fail "the program ended at once"; }
    sleep 0.1
done
[ -f "$work/home/Mirvane/DB/Mirvane.mdb" ] || fail "the first start made no database in ~/Mirvane"
grep -Eq "郵便番号 1[0-9]{5} 件を取り込みました" "$work/start.log" ||
    fail "the first start did not load the postal directory"
status=0
"$root/usr/bin/mirvane-admin" restore "$work/shop/DB/Mirvane.mdb" "$work/home/Mirvane" \
    >"$work/restore.log" 2>&1 || status=$?
kill $program
wait $program || true
program=
grep -q "起動中" "$work/restore.log" && [ "$status" -eq 1 ] ||
    { cat "$work/restore.log"; fail "the program does not keep its data in ~/Mirvane"; }
unexpected=$(find "$root/usr/lib/mirvane" -newer "$work/unpacked")
[ -z "$unexpected" ] || fail "written into the installation folder: $unexpected"
echo "PASS: $(basename "$deb"), Depends: $depends"
