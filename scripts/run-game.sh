#!/usr/bin/env bash
# Sets up a fresh machine, builds the game and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
exec build/game/tolva2 "$@"
