#!/usr/bin/env bash
# The installed game, tried as a new player meets it. Builds the Debian package, checks it
# with lintian and the desktop's own validators, installs it with dpkg into a throwaway
# root (never the machine's /usr), and runs the installed tolva2-cli and the installed
# game under Xvfb as the unprivileged user nobody with a fresh HOME. Passes when the game
# starts, a level is played through `tolva2-cli session` against the installed data,
# every file they write is under that HOME, and nothing in the installed root changed.
# TOLVA_INSTALLED_SHOT=FILE.png keeps a screenshot of the installed game.
set -euo pipefail
cd "$(dirname "$0")/.."
source_dir=$PWD

work=$(mktemp -d /tmp/tolva2-package-XXXXXX)
xvfb_pid=""
game_pid=""
finish() {
  if [ -n "$game_pid" ]; then kill "$game_pid" 2>/dev/null || true; fi
  if [ -n "$xvfb_pid" ]; then kill "$xvfb_pid" 2>/dev/null || true; wait "$xvfb_pid" 2>/dev/null || true; fi
  rm -rf "$work"
}
trap finish EXIT
fail() { echo "test-package: FAILED: $*" >&2; exit 1; }
step() { echo "test-package: $*"; }

# ---- the package and its checks ---------------------------------------------------------
step "building the package"
rm -f build/tolva2_*.deb
(cd build && timeout 600 cpack -G DEB >"$work/cpack.log" 2>&1) || { cat "$work/cpack.log"; fail "cpack"; }
deb=$(ls build/tolva2_*.deb)
step "$(basename "$deb"): $(du -k "$deb" | cut -f1) KiB"
dpkg-deb -f "$deb" Depends | grep -q "libqt6widgets6" || fail "Depends has no Qt from dpkg-shlibdeps"

step "lintian"
timeout 300 lintian --fail-on error "$deb" >"$work/lintian.txt" 2>&1 || { cat "$work/lintian.txt"; fail "lintian found errors"; }
sed 's/^/  /' "$work/lintian.txt"

step "installing into a throwaway root"
root="$work/root"
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates"
touch "$root/var/lib/dpkg/status"
chmod 755 "$work" "$root"
# Only this package goes into the root; its libraries are the machine's own.
timeout 120 dpkg --root="$root" --force-depends --log=/dev/null -i "$deb" >"$work/dpkg.log" 2>&1 \
  || { cat "$work/dpkg.log"; fail "dpkg --root"; }
listing=$(dpkg --root="$root" -L tolva2)
for want in /usr/games/tolva2 /usr/games/tolva2-cli /usr/sbin/tolva2-hiscored \
            /usr/share/games/tolva2/levels/default/levels.set /usr/share/games/tolva2/data/0.mod \
            /usr/share/games/tolva2/help/help.htm /usr/lib/games/tolva2/plugins/libtolva2_audio.so \
            /usr/share/icons/hicolor/scalable/apps/tolva2.svg /usr/lib/systemd/system/tolva2-hiscored.service \
            /usr/share/man/man6/tolva2.6.gz /usr/share/man/man6/tolva2-cli.6.gz \
            /usr/share/man/man8/tolva2-hiscored.8.gz /usr/share/doc/tolva2/copyright; do
  grep -qx "$want" <<<"$listing" || fail "dpkg -L tolva2 lists no $want"
done
for size in 16 32 48 64 128 256; do
  grep -qx "/usr/share/icons/hicolor/${size}x${size}/apps/tolva2.png" <<<"$listing" || fail "no ${size}px icon"
done
desktop=$(grep '^/usr/share/applications/.*\.desktop$' <<<"$listing") || fail "no desktop entry"
metainfo=$(grep '^/usr/share/metainfo/.*\.metainfo\.xml$' <<<"$listing") || fail "no metainfo"

step "validators"
desktop-file-validate "$root$desktop" || fail "desktop-file-validate"
grep -qx 'Categories=Game;LogicGame;' "$root$desktop" || fail "desktop entry categories"
appstreamcli validate --no-net "$root$metainfo" >"$work/appstream.txt" 2>&1 || { cat "$work/appstream.txt"; fail "appstreamcli"; }
# The unit as it would run: its ExecStart pointed at the installed server of this root.
sed "s|^ExecStart=/usr/sbin/|ExecStart=$root/usr/sbin/|" "$root/usr/lib/systemd/system/tolva2-hiscored.service" \
  >"$work/tolva2-hiscored.service"
systemd-analyze verify --man=no "$work/tolva2-hiscored.service" || fail "systemd-analyze verify"
for page in tolva2.6 tolva2-cli.6 tolva2-hiscored.8; do
  zcat "$root/usr/share/man/man${page##*.}/$page.gz" | grep -q '^\.SH DESCRIPTION' || fail "manual $page has no DESCRIPTION"
done

# ---- the installed programs as an ordinary player ---------------------------------------
snapshot() { (cd "$root" && find . -printf '%p %y %m %s %T@\n' | sort && find . -type f -print0 | sort -z | xargs -0 sha256sum); }
snapshot >"$work/before.txt"
home="$work/home"
mkdir -p "$home"
chown nobody "$home"
chmod 700 "$home"
marker="$work/marker"
touch "$marker"
sleep 1
# as_player SECONDS COMMAND...: runs COMMAND as nobody with the player's HOME, bounded.
as_player() {
  local limit=$1
  shift
  timeout "$limit" runuser -u nobody -- env -i HOME="$home" PATH=/usr/bin:/bin LANG=C.UTF-8 TMPDIR="$home/tmp" \
    XDG_RUNTIME_DIR="$home/runtime" ${DISPLAY:+DISPLAY=$DISPLAY} "$@"
}
runuser -u nobody -- mkdir -m 700 "$home/tmp" "$home/runtime"

step "tolva2-cli session against the installed data"
cli="$root/usr/games/tolva2-cli"
as_player 30 "$cli" version | grep -q '^tolva2-cli ' || fail "tolva2-cli version"
script="newgame 1"$'\n'
while read -r cell; do script+="click ${cell/,/ }"$'\n'"wait 2000"$'\n'; done \
  < <(grep '^level 1:' tools/levelgen/default-solutions.txt | cut -d: -f2 | tr ' ' '\n' | grep ,)
script+=$'wait 20000\nlabels\ninitials ab\nendgame\ntable\nquit\n'
out=$(as_player 120 "$cli" session --seed 1 <<<"$script") || { echo "$out"; fail "session"; }
grep -q '^Level: 2$' <<<"$out" || { echo "$out"; fail "level 1 was not cleared"; }
grep -q '^checksum: ok$' <<<"$out" || { echo "$out"; fail "no hiscore table"; }
player="$home/.local/share/tolva2"
for f in tolva2.ini stat.ini levels/default/hiscore.hi; do [ -f "$player/$f" ] || fail "no $f in the player's folder"; done
stats=$(as_player 60 "$cli" stats show) || fail "stats show without a folder"
awk '$1 == 1 { for (i = 2; i <= NF; i++) if ($i != 0) seen = 1 } END { exit !seen }' <<<"$stats" \
  || { echo "$stats" | head -3; fail "stats show does not show level 1 played"; }
as_player 60 "$cli" hiscore page | grep -q 'name="hiscoredata"' || fail "hiscore page without a folder"

step "the installed game under Xvfb"
mkdir -p "$work/fb"
exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1024x768x24 -fbdir "$work/fb" -nolisten tcp -ac >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
exec 3>&-
for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
[ -s "$work/display" ] || fail "Xvfb did not start"
export DISPLAY=":$(cat "$work/display")"
# start_game [VAR=VALUE...]: the installed game as the player, in the background.
start_game() {
  as_player 120 env "$@" sh -c 'echo $$ > "$HOME/runtime/game.pid"; exec "$0" > "$HOME/runtime/game.log" 2>&1' \
    "$root/usr/games/tolva2" 2>/dev/null &
  game_pid=$!
}
stop_game() {
  kill "$(cat "$home/runtime/game.pid")" 2>/dev/null || true
  { wait "$game_pid"; } 2>/dev/null || true
  game_pid=""
}
# A player with no folder yet: the game makes it on its first start.
start_game XDG_DATA_HOME="$home/second"
for _ in $(seq 100); do [ -d "$home/second/tolva2" ] && break; sleep 0.1; done
[ -d "$home/second/tolva2" ] || { cat "$home/runtime/game.log"; fail "the game made no player's folder"; }
stop_game
# The player of the session above: the game shows that session's hiscore.
start_game
sleep 8
kill -0 "$game_pid" 2>/dev/null || { cat "$home/runtime/game.log"; fail "the installed game did not keep running"; }
xwdtopnm "$work/fb/Xvfb_screen0" 2>/dev/null | pnmtopng >"$work/shot.png" 2>/dev/null
if [ -n "${TOLVA_INSTALLED_SHOT:-}" ]; then cp "$work/shot.png" "$TOLVA_INSTALLED_SHOT"; fi
stop_game

step "where the files went"
snapshot >"$work/after.txt"
diff -u "$work/before.txt" "$work/after.txt" >&2 || fail "the installed root changed"
# A file that vanishes while find walks past it (a build or a database beside this run) makes
# find exit 1; that is no stray file, so only what it prints counts.
stray=$(find / -xdev \( -path /proc -o -path /sys -o -path "$home" \) -prune -o -user nobody -newer "$marker" -print 2>/dev/null | head || true)
for tmp in /tmp /var/tmp /dev/shm; do
  stray+=$(find "$tmp" \( -path "$home" \) -prune -o -user nobody -newer "$marker" -print 2>/dev/null | head || true)
done
[ -z "$stray" ] || fail "files written outside HOME: $stray"
(cd "$home" && find . \( -path ./runtime -o -path ./tmp \) -prune -o -print | sort | sed 's/^/  written: /')
step "passed"
