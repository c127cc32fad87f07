#!/usr/bin/env bash
# Builds the tests for Windows and runs them under Wine, each room as one process. Arguments go to ctest, such as "-R link".
set -euo pipefail
cd "$(dirname "$0")/.."
source tools/prepare.sh
source tools/wine.sh

prepare windows-tests
use_windows_sysroot
build_preset windows-dev
use_wine build/wine-tests build/windows-dev/program
# The far end of COM5, for the tests of the line.
xvfb-run -a python3 -B tests/support/far_end.py "$WINEPREFIX/dosdevices/com5" ctest --preset windows-dev "$@"
