#!/usr/bin/env bash
# Builds the Debian package and checks it: it holds exactly the installed tree, its control fields are
# filled in, and lintian finds no errors in it.
set -euo pipefail
build=$1
expected=$2
for tool in dpkg-deb dpkg-shlibdeps lintian; do
    command -v "$tool" >/dev/null || { echo "SKIP: $tool is missing (scripts/bootstrap installs it)"; exit 77; }
done
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
cpack -G DEB --config "$build/CPackConfig.cmake" -B "$out" >/dev/null
deb=$(ls "$out"/zentoria_*.deb)
diff -u "$expected" <(dpkg-deb --contents "$deb" | awk '$1 !~ /^d/ {print $6}' | sed 's|^\./||' | LC_ALL=C sort) ||
    { echo "FAIL: the package holds other files than the install"; exit 1; }
# Each field is read whole before it is looked at: "grep -q" would stop reading early, and the writer's
# broken pipe would fail the pipeline now and then.
for field in Package Version Depends Section Homepage Description Maintainer; do
    value=$(dpkg-deb --field "$deb" "$field")
    [ -n "$value" ] || { echo "FAIL: no $field field"; exit 1; }
done
depends=$(dpkg-deb --field "$deb" Depends)
[[ $depends == *libqt6widgets6* ]] || { echo "FAIL: the dependencies miss Qt"; exit 1; }
[[ $depends == *libtag1v5* ]] || { echo "FAIL: the dependencies miss TagLib"; exit 1; }
report=$(lintian --tag-display-limit 0 "$deb" 2>/dev/null || true)
echo "$report"
if echo "$report" | grep -q '^E:'; then
    echo "FAIL: lintian reports errors"
    exit 1
fi
echo "package $(basename "$deb") as expected"
