# The pages that are made from the program are what it would make today.

load ../cli/helper

@test "docs/formats.md is what its script makes" {
  "$repository/tests/docs/formats-page.sh" "$mova" >page.md
  diff page.md "$repository/docs/formats.md" ||
    { echo "update it: tests/docs/formats-page.sh build/release/bin/mova >docs/formats.md"; false; }
}

@test "the table of settings is the one that the command knows" {
  diff <(sed -n '/<!-- settings -->/,/<!-- \/settings -->/p' "$repository/docs/settings.md" | sed '1d;$d') \
    <("$build/cli/texts/mova_texts" settings) ||
    { echo "update it by what build/release/cli/texts/mova_texts settings prints"; false; }
}

@test "the table of settings has the fields of the record, in their order" {
  diff <(sed -n 's/^| `\(.*\)` | .*/\1/p' "$repository/docs/settings.md") \
    <(sed -n '/^struct MOVASettings/,/^};/s/^ *\w* \([A-Z]\w*\)\( = .*\)\?;$/\1/p' "$repository/include/mova/mova.h")
}

@test "a default of the table, assigned, changes nothing" {
  sed -n 's/^| `\(.*\)` .* | \(.*\) |$/\1=\2/p' "$repository/docs/settings.md" | sed 's/=empty$/=/' >assignments
  [ "$(wc -l <assignments)" -eq 39 ]
  while IFS= read -r assignment; do set -- "$@" --set "$assignment"; done <assignments
  caption_file film.srt
  mkdir plain assigned
  for target in "Sub Station Alpha" "Timed Text 1.0" "Final Cut Pro Xml" "Csv2"; do
    "$mova" convert film.srt --to "$target" --output plain/ --quiet
    "$mova" convert film.srt --to "$target" --output assigned/ --quiet "$@"
  done
  diff -r plain assigned
}
