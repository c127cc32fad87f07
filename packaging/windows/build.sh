#!/usr/bin/env bash
# Builds the programs for Windows: build/windows/program runs where it is copied to. KARVO_WINDOWS_SYSROOT names the libraries.
set -euo pipefail
cd "$(dirname "$0")/../.."
source tools/prepare.sh

prepare windows
use_windows_sysroot
build_preset windows
