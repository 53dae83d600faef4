#!/usr/bin/env bash
# Runs the workbench: in a window when there is a display, otherwise rendering the gallery to PNGs.
set -euo pipefail
build_dir=$1
gallery_dir=$2
workbench="$build_dir/bin/tessel-workbench"
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec "$workbench"
fi
export SDL_VIDEODRIVER=offscreen
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    XDG_RUNTIME_DIR=$(mktemp -d)
    export XDG_RUNTIME_DIR
fi
mkdir -p "$gallery_dir"
"$workbench" --gallery "$gallery_dir"
echo "Gallery written to $gallery_dir"
