# The pages that are made from the program are what it would make today.

load ../cli/helper

@test "docs/formats.md is what its script makes" {
  "$repository/tests/docs/formats-page.sh" "$mova" >page.md
  diff page.md "$repository/docs/formats.md" ||
    { echo "update it: tests/docs/formats-page.sh build/release/bin/mova >docs/formats.md"; false; }
}
