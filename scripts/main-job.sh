# In a fresh Debian: installs /root/quorvex-config.deb, works with it, removes it; scripts/check-install runs it.
# shellcheck shell=bash
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8
readonly DEB=/root/quorvex-config.deb UNIT=/dev/quorvex/COM1 LIMIT_S=20
# An ordinary user, who may open serial ports.
readonly AS_USER=(setpriv --reuid=bench --regid=bench --init-groups env HOME=/tmp/bench XDG_RUNTIME_DIR=/tmp/bench)

heading() {
    printf '\n=== %s ===\n' "$*"
}
fail() {
    printf 'main-job: %s\n' "$*" >&2
    exit 1
}

apt() {
    apt-get -q -y -o Dpkg::Use-Pty=0 --no-install-recommends "$@" >/root/apt.log 2>&1 ||
        fail "apt-get $*: $(tail -n 3 /root/apt.log)"
}

# Every file and folder, but for what apt, dpkg and the like write down, and this work itself.
files() {
    find / -xdev \( -path /dev -o -path /proc -o -path /root -o -path /tmp -o -path /run -o -path /var/cache -o \
        -path /var/lib/apt -o -path /var/lib/dpkg -o -path /var/log \) -prune -o -print | LC_ALL=C sort
}

# until_true COMMAND...: waits for it to succeed.
until_true() {
    local end=$((SECONDS + LIMIT_S))
    until "$@"; do
        ((SECONDS < end)) || fail "$* did not come true within $LIMIT_S s."
        sleep 0.1
    done
}

has_open() {  # PID FILE
    find "/proc/$1/fd" -lname "$(readlink -f "$2")" 2>/dev/null | grep -q .
}

install_it() {
    heading "Installing"
    useradd --groups dialout bench
    install -d -m 700 -o bench -g bench /tmp/bench
    install -d -o bench -g bench "${UNIT%/*}"
    apt satisfy "$(dpkg-deb -f "$DEB" Depends)"
    files >/root/before
    apt install "$DEB"
    files >/root/installed
    echo "$(dpkg-query -W quorvex-config), $(dpkg-query -L quorvex-config | wc -l) files and folders"
}

read_a_beltpack() {
    heading "Reading a Beltpack"
    "${AS_USER[@]}" quorvex-simulator beltpack --link "$UNIT" --set 01=00443186A1 >/root/unit.log &
    unit=$!
    until_true test -e "$UNIT"
    cd /tmp/bench
    "${AS_USER[@]}" quorvex-tool --port COM1 read found.bpc
    "${AS_USER[@]}" quorvex-tool check found.bpc
    quorvex-tool show found.bpc | grep -q '^PSN 100001$' || fail "the file does not hold what the unit has."
}

open_the_window() {
    heading "Opening the window"
    QT_QPA_PLATFORM=offscreen "${AS_USER[@]}" quorvex-config &
    local window=$! status=0
    until_true has_open "$window" "$UNIT"
    echo "It has opened the port."
    kill -TERM "$window"
    wait "$window" || status=$?
    ((status == 0)) || fail "the window ended with $status on SIGTERM."
    kill -TERM "$unit"
    wait "$unit" || fail "the simulator ended with $? on SIGTERM."
}

# The example, with a port that this machine has in place of the adapters; udev makes the links then.
try_the_rule() {
    heading "Trying the example of a udev rule"
    local rules=/etc/udev/rules.d/60-quorvex-ports.rules word
    sed 's/^ATTRS.*\(SYMLINK\)/KERNEL=="tty", \1/' "/usr/share/doc/quorvex-config/examples/${rules##*/}" >"$rules"
    udevadm test /sys/class/tty/tty >/root/udev.log 2>&1
    rm "$rules"
    for word in ID_MM_DEVICE_IGNORE=1 ID_MM_PORT_IGNORE=1; do
        grep -x "$word" /root/udev.log || fail "the rule does not set $word."
    done
    ls -l /dev/quorvex/COM1 /dev/quorvex/COM2
    ! grep -F "$rules:" /root/udev.log | grep -v ' LINK ' || fail "udev does not take what stands above."
}

look_around() {
    heading "Looking around"
    local page
    for page in quorvex-config quorvex-tool quorvex-simulator; do
        man "$page" | grep -q "^ *$page — " || fail "there is no manual page of $page."
    done
    grep -q '^application/x-quorvex-beltpack-settings:\*\.bpc$' <(sed -n 's/^[0-9]*://p' /usr/share/mime/globs2) ||
        fail "the type of settings files is not known."
    desktop-file-validate /usr/share/applications/quorvex-config.desktop
    bash -c 'source /usr/share/bash-completion/completions/quorvex-tool; complete -p quorvex-tool'
}

remove_it() {
    heading "Removing"
    apt purge quorvex-config
    files >/root/after
    diff /root/before /root/after || fail "what stands above is left (>) or gone (<)."
    echo "Nothing is left."
}

install_it
read_a_beltpack
open_the_window
try_the_rule
look_around
remove_it
