#!/bin/bash
# Looks for fused multiply-adds: none in an object of a caller, some in its control.
# usage: contraction.sh OBJECT CONTROL_OBJECT
set -euo pipefail

fused() { objdump --disassemble --no-show-raw-insn "$1" | grep -cE 'vfn?m(add|sub)|fn?m(add|sub)|fml[as]' || true; }

control=$(fused "$2")
if [ "$control" -eq 0 ]; then
    echo "failed: the control is not fused either, so this test shows nothing"
    exit 1
fi
object=$(fused "$1")
echo "fused multiply-adds: $object, in the control $control"
[ "$object" -eq 0 ]
