# A display on which every machine shows the same; sourced by the scripts that take pictures, after children.sh.
# shellcheck shell=bash disable=SC2154  # scratch and first_line are children.sh's

# on_virtual_display COMMAND...
on_virtual_display() {
    start Xvfb -displayfd 1 -screen 0 2560x1600x24 -dpi 96 -nolisten tcp 2>"$scratch/xvfb.log"
    mkdir -m 700 "$scratch/runtime"
    env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORMTHEME -u QT_STYLE_OVERRIDE DISPLAY=":$first_line" QT_QPA_PLATFORM=xcb \
        XDG_RUNTIME_DIR="$scratch/runtime" DBUS_SESSION_BUS_ADDRESS=disabled: LC_ALL=C.UTF-8 "$@"
}
