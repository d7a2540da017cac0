#!/bin/sh
# Prints the README's table of formats from the list that `mova formats` gives: formats-table.sh MOVA
# With --write FILE behind it, puts the table into that file.
table=$("$1" formats | awk '
  NR == 1 { print "| Name | Extension | Use |"; print "|---|---|---|"; next }
  { name = substr($0, 1, 22); sub(/ +$/, "", name); extension = substr($0, 23, 11); sub(/ +$/, "", extension)
    print "| " name " | " extension " | " substr($0, 34) " |" }')
if [ "$2" = --write ]; then
  awk -v table="$table" '
    /<!-- \/formats -->/ { inside = 0 }
    !inside { print }
    /<!-- formats -->/ { inside = 1; print table }' "$3" >"$3.new" && mv "$3.new" "$3"
else
  printf '%s\n' "$table"
fi
