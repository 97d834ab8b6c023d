#!/bin/sh
# Solves every level of the shipped sets with tolva2-cli, one level at a time and at low
# priority, and reports the time of each level and of each set. Every clearing found is
# proven on the game's own board before it is counted. Too slow for the default test run.
#   scripts/solve-all.sh [BUILD_DIR] [BUDGET_SECONDS] [SET...]
# Exits 1 when some level stays unsolved.
set -u
here=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$here/build"}
budget=${2:-60}
[ $# -ge 2 ] && shift 2 || shift $#
sets=${*:-"default miniatures"}
cli="$build/game/tolva2-cli"
[ -x "$cli" ] || { echo "solve-all: no $cli; build tolva2-cli first" >&2; exit 2; }
failed=0
for set in $sets; do
    dir="$here/game/levels/$set"
    count=$("$cli" levels check "$dir" | sed -n 's/^levels: //p')
    set_start=$(date +%s.%N)
    n=1
    while [ "$n" -le "${count:-0}" ]; do
        start=$(date +%s.%N)
        line=$(nice -n 10 "$cli" levels solve "$dir" --level "$n" --budget "$budget")
        status=$?
        end=$(date +%s.%N)
        clicks=$(printf '%s\n' "$line" | awk '/unsolved/ {print "no"; next} {print NF - 2}')
        [ $status -eq 0 ] && result=ok || { result=UNSOLVED; failed=1; }
        printf '%s\t%d\t%s\t%.2f s\t%s clicks\n' "$set" "$n" "$result" "$(awk "BEGIN{print $end - $start}")" "$clicks"
        n=$((n + 1))
    done
    printf '%s\ttotal\t\t%.1f s\n' "$set" "$(awk "BEGIN{print $(date +%s.%N) - $set_start}")"
done
exit $failed
