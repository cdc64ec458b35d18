#!/bin/sh
# Checks that the shared library given as $1 exports exactly the five entry
# points and nothing else.
set -eu

library="$1"
expected="h3x9c
n5p8w
q7m2k
t2v6r
x4b7d"

actual=$(nm -D --defined-only "$library" | awk '{ print $NF }' | sed 's/@.*//' | sort)

if [ "$actual" != "$expected" ]; then
  echo "exported symbols of $library:"
  echo "$actual"
  echo "expected exactly:"
  echo "$expected"
  exit 1
fi
echo "exactly the five entry points are exported"
