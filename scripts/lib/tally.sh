# Functions that count what test programs report. To be sourced by bash scripts.
#
# The test programs' own output is read, line by line, instead of a report that they write when
# they end: so nothing is lost when one crashes or is stopped, and that counts as a failure too.

tally_passed=0
tally_failed=0
tally_skipped=0

# tally NAME STATUS LOG: adds up the output LOG of a GoogleTest program that ended with STATUS,
# shows the whole output of each test that failed, and says what came out.
tally() {
    local name=$1 status=$2 log=$3 passed=0 failed=0
    read -r passed failed < <(tally_count "$log")
    tally_show_failures "$log"
    if [ "$status" != 0 ] && [ "$failed" = 0 ]; then
        failed=1
        printf '%s: ended early with status %s; its last lines:\n' "$name" "$status"
        tail -n 40 "$log" | sed 's/^/    /'
    elif [ $((passed + failed)) = 0 ]; then
        failed=1
        printf '%s: ran no test\n' "$name"
    elif ! grep -q '^\[==========\] .* ran\.' "$log"; then
        failed=$((failed + 1))
        printf '%s: did not come to its end; its last lines:\n' "$name"
        tail -n 40 "$log" | sed 's/^/    /'
    fi
    printf '%s: %d passed, %d failed (%s)\n' "$name" "$passed" "$failed" "$(tally_time "$log")"
    tally_passed=$((tally_passed + passed))
    tally_failed=$((tally_failed + failed))
}

# Only the line that ends a test has a time in it, the summary at the end has none. A test can
# have written something without a line break before it.
tally_count() {
    tr -d '\r' <"$1" | awk '
        /\[       OK \] .* \([0-9]+ ms\)$/ { ++passed }
        /\[  FAILED  \] .* \([0-9]+ ms\)$/ { ++failed }
        END { print passed + 0, failed + 0 }'
}

# What the program says in its last line of the time that its tests took.
tally_time() {
    local milliseconds
    milliseconds=$(sed -nE 's/^\[==========\] .* ran\. \(([0-9]+) ms total\).*/\1/p' "$1")
    printf '%d s\n' $((${milliseconds:-0} / 1000))
}

tally_show_failures() {
    tr -d '\r' <"$1" | awk '
        /^\[ RUN      \]/ { text = "" }
        { text = text "    " $0 "\n" }
        /\[  FAILED  \] .* \([0-9]+ ms\)$/ { printf "%s", text; text = "" }'
}

# tally_check NAME COMMAND...: one case, which passes when the command ends with status 0. One that
# ends with 77 is skipped: it has said what this machine lacks for it.
tally_check() {
    local name=$1 started=$SECONDS output status=0
    shift
    output=$("$@" 2>&1) || status=$?
    if [ "$status" = 0 ]; then
        tally_passed=$((tally_passed + 1))
        printf '%s: ok (%d s)\n' "$name" $((SECONDS - started))
    elif [ "$status" = 77 ]; then
        tally_skipped=$((tally_skipped + 1))
        printf '%s: skipped (%s)\n' "$name" "$(tail -n 1 <<<"$output")"
    else
        tally_failed=$((tally_failed + 1))
        printf '%s: FAILED (%d s)\n' "$name" $((SECONDS - started))
        sed 's/^/    /' <<<"$output"
    fi
}

# The closing line; fails when a test failed or none ran.
tally_end() {
    printf '%d passed, %d failed' "$tally_passed" "$tally_failed"
    [ "$tally_skipped" = 0 ] || printf ', %d skipped' "$tally_skipped"
    printf '\n'
    [ "$tally_failed" = 0 ] && [ "$tally_passed" != 0 ]
}
