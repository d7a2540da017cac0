#!/bin/sh
# Compares the names that a shared library shows with a sorted list of them: test.sh NM LIBRARY LIST
"$1" -DC --defined-only "$2" | sed 's/^[0-9a-f]* . //' | LC_ALL=C sort | diff "$3" -
