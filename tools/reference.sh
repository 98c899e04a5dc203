#!/usr/bin/env bash
# Writes the reference of kelmo, from the comments of its headers, to build/reference. Warnings of Doxygen are errors: a
# function without a comment is one.
set -euo pipefail

unset CDPATH
cd "$(dirname "$0")/.."
mkdir -p build/reference
doxygen docs/Doxyfile
echo build/reference/index.html
