#!/usr/bin/env bash
# Fails when the build reads a system header or links a system library that a fresh install of packages.txt
# would not bring: the file's Debian package is neither listed nor pulled in by a listed package's
# dependencies. It asks the compiler's own dependency records and the link lines, so it sees exactly what
# the build used, not what somebody remembered to write down.
#
#   tools/check-packages.sh [BUILD_DIR]    (default build/dev, configured and built first when missing)
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build/dev}
list=${PACKAGES_LIST:-packages.txt}

if [ ! -f "$build/.ninja_deps" ]; then
    cmake --preset dev >/dev/null
    cmake --build "$build" -j "$(nproc)" >/dev/null
fi

# Packages that a fresh install of the list brings: the listed ones and, recursively, what they depend on.
listed=$(grep -v -E '^\s*(#|$)' "$list" | awk '{print $1}')
# shellcheck disable=SC2086
brought=$( { printf '%s\n' $listed
             apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts --no-breaks \
                 --no-replaces --no-enhances $listed 2>/dev/null | grep -v -E '^\s|^<' ; } | sed 's/:.*//' | sort -u)

# System files the build used: headers from the dependency records, libraries from the link lines.
used=$( {
    ninja -C "$build" -t deps | grep -E '^\s+/' | sed 's/^\s*//'
    ninja -C "$build" -t commands | tr ' ' '\n' | grep -E '^/.*\.(so|a)(\.[0-9.]+)?$'
    for flag in $(ninja -C "$build" -t commands | tr ' ' '\n' | grep -E '^-l[A-Za-z0-9_+-]+$' | sort -u); do
        for kind in so a; do
            found=$(${CXX:-c++} -print-file-name="lib${flag#-l}.$kind")
            [ "${found#/}" != "$found" ] && { echo "$found"; break; }
        done
    done
} | grep -v -E "^$PWD/" | xargs -r realpath -s -m | sort -u)

# The owning package of each file, asked in one go. Merged /usr means a file may be recorded under /lib
# instead of /usr/lib, so a file nobody owns is asked for again without its /usr.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
printf '%s\n' "$used" | xargs -r dpkg -S >"$scratch/owned" 2>"$scratch/misses" || true
misses=$(sed -n 's/^dpkg-query: no path found matching pattern //p' "$scratch/misses")
printf '%s\n' "$misses" | grep '^/usr/' | sed 's|^/usr||' | xargs -r dpkg -S >>"$scratch/owned" 2>"$scratch/misses2" || true
unowned=$( { printf '%s\n' "$misses" | grep -v '^/usr/'
             sed -n 's/^dpkg-query: no path found matching pattern //p' "$scratch/misses2" | sed 's|^|/usr|'; } | grep -v '^$' || true)
owners=$(sed 's/: .*//' "$scratch/owned")

missing=$(printf '%s\n' "$owners" | tr ',' '\n' | sed 's/^ *//; s/:.*//' | grep -v '^$' | sort -u | comm -23 - <(printf '%s\n' "$brought"))

status=0
if [ -n "$missing" ]; then
    echo "check-packages: the build uses files of packages that $list does not bring in:"
    for package in $missing; do
        example=$(grep -E "^([^:]*, )?$package(:[a-z0-9]+)?[,:]" "$scratch/owned" | head -n 1 | sed 's/^.*: //')
        echo "  $package (for example $example)"
    done
    status=1
fi
if [ -n "$unowned" ]; then
    echo "check-packages: system files used by the build that no Debian package owns (installed by hand?):"
    printf '  %s\n' $unowned | head -n 20
    status=1
fi
[ $status = 0 ] && echo "check-packages: every system header and library the build uses comes from $list ($(printf '%s\n' "$used" | wc -l) files)"
exit $status
