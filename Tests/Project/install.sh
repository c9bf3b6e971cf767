#!/bin/bash
# Installs a build into an emptied prefix.
# usage: install.sh BUILD_FOLDER PREFIX
set -euo pipefail
build=$1 prefix=$2

rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix"
