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
for field in Package Version Depends Section Homepage Description Maintainer; do
    dpkg-deb --field "$deb" "$field" | grep -q . || { echo "FAIL: no $field field"; exit 1; }
done
dpkg-deb --field "$deb" Depends | grep -q libqt6widgets6 || { echo "FAIL: the dependencies miss Qt"; exit 1; }
report=$(lintian --tag-display-limit 0 "$deb" 2>/dev/null || true)
echo "$report"
if echo "$report" | grep -q '^E:'; then
    echo "FAIL: lintian reports errors"
    exit 1
fi
echo "package $(basename "$deb") as expected"
