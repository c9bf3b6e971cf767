#!/bin/bash
# Compiles each installed header alone, without a warning.
# usage: headers-alone.sh PREFIX COMPILER...
set -euo pipefail
include=$1/include
shift

mapfile -t headers < <(cd "$include" && find . -name '*.h' | sed 's|^\./||' | sort)
if [ "${#headers[@]}" -lt 10 ]; then
    echo "failed: only ${#headers[@]} headers are installed in $include"
    exit 1
fi
if printf '%s\n' "${headers[@]}" | grep 'Detail/'; then
    echo "failed: the headers above are the library's own and must not be installed"
    exit 1
fi

compile_alone() {
    local compiler=$1 header=$2
    printf '#include <%s>\n' "$header" |
        "$compiler" -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror \
            "-I$include" -x c++ - && return
    echo "failed: <$header> with $compiler"
    return 1
}
export -f compile_alone
export include

for compiler in "$@"; do
    echo "$compiler: ${#headers[@]} headers"
    # A header that fails makes xargs fail, after the others have had their turn.
    printf '%s\n' "${headers[@]}" | xargs -P 2 -I '{}' bash -c "compile_alone '$compiler' '{}'"
done
