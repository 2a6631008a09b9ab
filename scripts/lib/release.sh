# To be sourced by bash scripts that use a tool of which each version finds other things.

# needs_debian_12 TOOL: ends the script with status 77 on another release. What the tools of Debian 12
# say decides; those of a later release have checks, false alarms and line breaks of their own, or
# are no longer there.
needs_debian_12() {
    local release
    release=$(. /etc/os-release && echo "$ID ${VERSION_ID:-}")
    [ "$release" != "debian 12" ] || return 0
    printf '%s: only with the version of Debian 12; this is %s\n' "$1" "$release" >&2
    exit 77
}
