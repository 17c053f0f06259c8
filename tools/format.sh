#!/bin/sh
# Lays out every source file by .clang-format; with --check only says which ones differ, and fails if any does.
set -eu
cd "$(dirname "$0")/.."
case ${1-} in
    --check) mode='--dry-run --Werror' ;;
    '') mode='-i' ;;
    *) echo "usage: tools/format.sh [--check]" >&2; exit 2 ;;
esac
format=$(command -v clang-format-14 || command -v clang-format)
# shellcheck disable=SC2086
find src tests bench -name '*.h' -o -name '*.cpp' -o -name '*.mm' | sort | xargs "$format" $mode
