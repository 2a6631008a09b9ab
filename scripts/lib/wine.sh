# Functions to run Windows programs under Wine on a virtual screen. To be sourced by bash scripts.
#
# Everything lives in this tree's build folder and ends with the script: call `trap wine_stop EXIT`
# after sourcing. Nothing outside is touched, neither a display nor a Wine prefix of the user's.
#
#   wine_display            starts a virtual screen and exports DISPLAY
#   wine_prefix NAME        makes (once) and selects the prefix build/wine/NAME
#   wine_prefix_like NAME   the same, but as a quick copy of the prefix "base"
#   wine_place NAME         starts a screen, selects a prefix like "base" and makes the empty folder
#                           $wine_scratch, all for one subshell, with which they end
#   wine_alone NAME SECONDS PROGRAM ARGUMENT...
#                           runs a program in a place of its own, whose folder it is told of as
#                           --scratch; to be called in a subshell, which it ends
#   wine_run SECONDS PROGRAM ARGUMENT...
#                           runs a program; its output and its exit status come through, 124 when
#                           the time is over
#   wine_stop               ends all of it

wine_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
wine_folder=$wine_root/build/wine
wine_desktop=1280x1024
wine_screen=$wine_desktop
wine_boot_seconds=180
wine_screen_pids=()
wine_prefixes=()

# Windows programs see the names of files through this locale. The overrides keep Wine from asking
# for its own additions, from putting entries into the user's menus, and from holding a program that
# crashed in a debugger nobody attends.
export LC_ALL=C.UTF-8 WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'

wine_error() {
    printf 'wine: error: %s\n' "$*" >&2
    return 1
}

wine_display() {
    local folder number=
    mkdir -p "$wine_folder"
    folder=$(mktemp -d "$wine_folder/screen.XXXXXX")
    mkfifo "$folder/number"
    # Opened for both directions, the pipe blocks nobody, even if the server never starts.
    exec {wine_pipe}<>"$folder/number"
    Xvfb -displayfd "$wine_pipe" -screen 0 "${wine_screen}x24" -nolisten tcp \
        >"$folder/log" 2>&1 </dev/null &
    wine_screen_pids+=($!)
    read -r -t 30 -u "$wine_pipe" number || true
    exec {wine_pipe}>&-
    if [ -z "$number" ]; then
        wine_error "the virtual screen did not start: $(tail -n 1 "$folder/log")"
        return 1
    fi
    rm -rf "$folder"
    export DISPLAY=:$number
}

wine_prefix() {
    wine_select "$1"
    wine_is_current && return 0
    wineserver -k 2>/dev/null || true
    rm -rf "$WINEPREFIX"
    printf 'wine: preparing the prefix %s (some 15 seconds)\n' "$1"
    wine_run "$wine_boot_seconds" wineboot --init >/dev/null 2>&1 ||
        wine_error "a new prefix could not be prepared in $wine_boot_seconds seconds" || return 1
    # Without a window manager only the windows of a Wine desktop get caption bars.
    wine_set 'HKCU\Software\Wine\Explorer' Desktop Default &&
        wine_set 'HKCU\Software\Wine\Explorer\Desktops' Default "$wine_desktop" || return 1
    wine_settle
    wine_kind >"$WINEPREFIX/prepared"
}

wine_prefix_like() {
    wine_prefix base || return 1
    wine_settle
    local base=$WINEPREFIX
    wine_select "$1"
    wineserver -k 2>/dev/null || true
    rm -rf "$WINEPREFIX"
    cp -a "$base" "$WINEPREFIX"
    # The signs on the buttons of a caption, which Wine 8 does not find where its package puts them:
    # without them the buttons show the letters "0 1 r".
    cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts"
}

wine_select() {
    mkdir -p "$wine_folder"
    export WINEPREFIX=$wine_folder/$1
    wine_prefixes+=("$WINEPREFIX")
}

# What a prefix is made of. All scripts share the prefix "base": the desktop in it is the usual one,
# whatever the screen of the script that happens to come first.
wine_kind() {
    printf '%s, desktop %s\n' "$(wine --version)" "$wine_desktop"
}

wine_is_current() {
    [ "$(cat "$WINEPREFIX/prepared" 2>/dev/null)" = "$(wine_kind)" ]
}

wine_set() {
    wine_run 60 wine reg add "$1" /v "$2" /d "$3" /f >/dev/null 2>&1 ||
        wine_error "the setting $2 could not be made"
}

# Waits until Wine has written its registry and no process of the prefix is left.
wine_settle() {
    timeout -k 5 30 wineserver -w || wineserver -k 2>/dev/null || true
}

wine_run() {
    local seconds=$1 program=$2 status=0
    shift 2
    case $program in
        wine | wineboot | wineserver) ;;
        *) set -- "$program" "$@" && program=wine ;;
    esac
    # In the background, since a signal to the script is only handled once a foreground program ends.
    timeout -k 10 "$seconds" "$program" "$@" </dev/null &
    wait $! || status=$?
    # The program's helpers would otherwise go on without it.
    if [ "$status" = 124 ] || [ "$status" = 137 ]; then
        wineserver -k 2>/dev/null || true
        status=124
    fi
    return "$status"
}

wine_place() {
    wine_scratch=$wine_root/build/scratch/$1
    trap wine_stop EXIT
    trap 'exit 143' TERM INT
    rm -rf "$wine_scratch"
    mkdir -p "$wine_scratch"
    wine_display && wine_prefix_like "$1" || exit 1
}

# The updater's waits that cross midnight do not end, deliberately; a batch of tests has to be over
# before, or begin after it.
wine_away_from_midnight() {
    local longest=300 left
    left=$(($(date -d 'tomorrow 00:00' +%s) - $(date +%s)))
    [ "$left" -gt "$longest" ] || sleep $((left + 1))
}

wine_alone() {
    local seconds=$2 program=$3
    wine_away_from_midnight
    wine_place "$1"
    shift 3
    wine_run "$seconds" "$program" "--scratch=$wine_scratch" "$@"
    exit
}

# Makes the prefix "base", which the others are copies of, in a subshell.
wine_prepare() (
    trap wine_stop EXIT
    wine_display && wine_prefix base
)

wine_stop() {
    local prefix pid
    for prefix in "${wine_prefixes[@]}"; do
        [ -d "$prefix" ] && WINEPREFIX=$prefix timeout -k 5 20 wineserver -k 2>/dev/null || true
    done
    for pid in "${wine_screen_pids[@]}"; do
        kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null || true
    done
    wine_prefixes=()
    wine_screen_pids=()
}
