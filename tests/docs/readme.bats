# What the README says holds.

load ../cli/helper

@test "the two commands at the top are the launcher and the tests" {
  [ "$(grep '^    ' "$repository/README.md" | sed -n '1,2p')" = "    ./mova convert samples/harbour.srt --to WebVTT
    ./test" ]
  [ -x "$repository/mova" ]
  [ -x "$repository/test" ]
}

@test "the table of formats is the one that the command knows" {
  diff <(sed -n '/<!-- formats -->/,/<!-- \/formats -->/p' "$repository/README.md" | sed '1d;$d') \
    <("$repository/tests/docs/formats-table.sh" "$mova") ||
    { echo "update it: tests/docs/formats-table.sh build/release/bin/mova --write README.md"; false; }
}

@test "every sample is read and written" {
  for sample in "$repository"/samples/*; do
    run -0 "$mova" convert "$sample" --to SubRip --output "$PWD"
  done
}

@test "the files that the documents link to exist" {
  for document in "$repository"/*.md "$repository"/docs/*.md "$repository"/tests/golden/README.md; do
    for link in $(grep -o '](\([^)#]*\))' "$document" | sed 's/](\(.*\))/\1/' | grep -v '^https\?:'); do
      [ -e "$(dirname "$document")/$link" ] || { echo "$document: $link"; false; }
    done
  done
}
