#!/usr/bin/env bash
# Fails when a source file includes a header from a folder above its own floor (docs/layers.md).
# Usage: tools/check-layers.sh [repository root]. Plain bash and grep, so it runs on a bare build machine.
set -euo pipefail
root=${1:-"$(dirname "$0")/.."}
cd "$root"

# What each folder may include, besides itself. Folders not listed (workbench, tests, bench, fuzz) sit on top.
declare -A allowed=(
    [toolkit/support]=""
    [toolkit/media]="toolkit/support"
    [toolkit/gfx]="toolkit/support"
    [toolkit/ui]="toolkit/support toolkit/gfx"
    [toolkit/widgets]="toolkit/support toolkit/gfx toolkit/ui"
    [toolkit/platform]="toolkit/support toolkit/media toolkit/gfx toolkit/ui"
    [toolkit/testing]="toolkit/support toolkit/media toolkit/gfx toolkit/ui toolkit/widgets toolkit/platform"
)
toolkit="toolkit/support toolkit/media toolkit/gfx toolkit/ui toolkit/widgets"
allowed[frame]="$toolkit"
# The component folders, lowest first: each may include frame, the toolkit and the ones before it.
below="$toolkit frame"
for folder in parampanels tutorials uistate logging forms colour lists entry; do
    allowed[$folder]="$below"
    below="$below $folder"
done
allowed[formats]="$below"

# The folder an included path or a file belongs to: toolkit/<layer> or the top-level folder.
folderOf() {
    local path=$1
    case $path in
        toolkit/*/*) path=${path#toolkit/}; echo "toolkit/${path%%/*}" ;;
        */*) echo "${path%%/*}" ;;
        *) echo "" ;;
    esac
}

status=0
for folder in "${!allowed[@]}"; do
    [ -d "$folder" ] || continue
    while IFS= read -r hit; do
        file=${hit%%:*}
        rest=${hit#*:}
        line=${rest%%:*}
        included=${rest#*\"}
        included=${included%%\"*}
        target=$(folderOf "$included")
        # Includes of the folder itself (its own detail/ helpers too) or of files without a folder are fine;
        # another folder's detail/ helpers are private to it.
        [ -z "$target" ] || [ "$target" = "$folder" ] && continue
        if [[ $included == */detail/* ]]; then
            echo "$file:$line: $folder may not include $included (private to its folder)"
            status=1
            continue
        fi
        ok=0
        for floor in ${allowed[$folder]}; do
            [ "$target" = "$floor" ] && ok=1 && break
        done
        if [ $ok = 0 ]; then
            echo "$file:$line: $folder may not include $included (allowed: ${allowed[$folder]:-only itself})"
            status=1
        fi
    done < <(grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[^"]*"' --include='*.h' --include='*.cpp' "$folder" || true)
done
[ $status = 0 ] && echo "layers: no upward includes"
exit $status
