#!/bin/bash
# Installs a build into an emptied prefix, and checks that the tool's man page and completions are where man and the
# shells look for them.
# usage: install.sh BUILD_FOLDER PREFIX
set -euo pipefail
build=$1 prefix=$2

rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix"

[ -e "$prefix/bin/quarnscreen" ] || exit 0
for file in man/man1/quarnscreen.1 bash-completion/completions/quarnscreen zsh/vendor-completions/_quarnscreen \
    fish/vendor_completions.d/quarnscreen.fish; do
    if [ ! -s "$prefix/share/$file" ]; then
        echo "failed: share/$file was not installed"
        exit 1
    fi
done
