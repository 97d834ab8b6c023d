#!/usr/bin/env bash
# Builds the Debian package build/tolva2_<version>_<arch>.deb from the install rules
# (cmake/Packaging.cmake) with CPack; its Depends come from dpkg-shlibdeps.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh
rm -f build/tolva2_*.deb
(cd build && cpack -G DEB >/dev/null)
ls build/tolva2_*.deb
