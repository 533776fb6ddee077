#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Fails when a source is not as clang-format 14 would write it. Usage: FormatTest.sh PROJECT_FOLDER
set -euo pipefail
cd "$1"
format=$(command -v clang-format-14 || command -v clang-format)
"$format" --version | grep -q 'version 14\.' || { echo "clang-format 14 is needed"; exit 1; }
find src tools tests bench -name '*.cpp' -o -name '*.h' | xargs "$format" --dry-run --Werror
