#!/bin/bash
# Shows that library and tool are configured without any test package, by looking for none of them.
# usage: without-test-packages.sh WORK_FOLDER COMPILER
set -euo pipefail
work=$1 compiler=$2
source=$(cd "$(dirname "$0")/../.." && pwd)

configure() {
    cmake --fresh -S "$source" -B "$work" -G Ninja "-DCMAKE_CXX_COMPILER=$compiler" --no-warn-unused-cli \
        -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON -DCMAKE_DISABLE_FIND_PACKAGE_rapidcheck=ON "$@"
}

mkdir -p "$work"
# Without this control nothing would show that the packages are out of reach.
if configure -DBUILD_TESTING=ON >"$work/control.log" 2>&1; then
    echo "failed: the tests were configured although their package is switched off"
    exit 1
fi
configure -DBUILD_TESTING=OFF
