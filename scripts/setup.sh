#!/usr/bin/env bash
# Installs every Debian package the game and its tests need. Idempotent: when all is
# installed it only asks dpkg and returns within a second or two.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config clang libclang-rt-14-dev
  qt6-base-dev qt6-base-dev-tools libxcb1-dev qt6-multimedia-dev qt6-webengine-dev libopenmpt-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  libsqlite3-dev libcpp-httplib-dev libmicrohttpd-dev libpq-dev postgresql
  xvfb xauth xdotool x11-apps fonts-dejavu-core fonts-liberation
  cups printer-driver-cups-pdf poppler-utils
  pulseaudio pulseaudio-utils gstreamer1.0-plugins-base gstreamer1.0-plugins-good
  dpkg-dev fakeroot file help2man lintian desktop-file-utils appstream systemd netpbm
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
