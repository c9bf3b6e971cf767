#!/bin/bash
# Builds the consumer against an installed library with the flags of pkg-config, and runs it.
# usage: pkg-config.sh PREFIX WORK_FOLDER COMPILER
set -euo pipefail
prefix=$1 work=$2 compiler=$3

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name quarnscreen.pc)")
export PKG_CONFIG_PATH
mkdir -p "$work"
read -ra flags < <(pkg-config --cflags quarnscreen)
read -ra libraries < <(pkg-config --libs quarnscreen)
"$compiler" -std=c++20 "${flags[@]}" "$(dirname "$0")"/{Consumer,ScreenNames,ValueNames}.cpp -o "$work/consumer" "${libraries[@]}"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir quarnscreen) "$work/consumer"
