#!/usr/bin/env bash
# Installs the build into a temporary folder as a package would, and checks the tree: every file in its
# place and nothing more, the desktop entry and the AppStream metadata valid, the manual pages readable.
set -euo pipefail
build=$1
expected=$2
for tool in desktop-file-validate appstreamcli; do
    command -v "$tool" >/dev/null || { echo "SKIP: $tool is missing (scripts/bootstrap installs it)"; exit 77; }
done
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
DESTDIR="$root" cmake --install "$build" --prefix /usr >/dev/null
diff -u "$expected" <(cd "$root" && find . -type f | sed 's|^\./||' | LC_ALL=C sort) ||
    { echo "FAIL: the installed files differ from $expected"; exit 1; }
desktop-file-validate "$root/usr/share/applications/org.melvadex.Zentoria.desktop"
appstreamcli validate --no-net "$root/usr/share/metainfo/org.melvadex.Zentoria.metainfo.xml"
for page in "$root"/usr/share/man/man1/*.gz; do
    # grep reads the whole page: stopping early would break zcat's pipe and fail the pipeline.
    zcat "$page" | grep '^\.TH ' >/dev/null || { echo "FAIL: $page is no manual page"; exit 1; }
done
[ -x "$root/usr/bin/zentoria" ] && [ -x "$root/usr/bin/zentoria-report" ]
"$root/usr/bin/zentoria" --version | grep -q '^zentoria '
echo "installed tree as expected"
