#!/bin/bash
# Builds a static release of the library, and installs it into an emptied prefix.
# usage: static-release.sh WORK_FOLDER PREFIX COMPILER
set -euo pipefail
work=$1 prefix=$2 compiler=$3
here=$(cd "$(dirname "$0")" && pwd)

cmake -S "$here/../.." -B "$work" -G Ninja "-DCMAKE_CXX_COMPILER=$compiler" -DCMAKE_BUILD_TYPE=Release \
    -DBUILD_SHARED_LIBS=OFF -DBUILD_TESTING=OFF -DQUARN_BUILD_TOOLS=OFF
cmake --build "$work"
"$here/install.sh" "$work" "$prefix"
