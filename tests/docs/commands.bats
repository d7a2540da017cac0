# Every command line of the documents runs. A line that would take hours names a variable that makes it short.

load ../cli/helper

export NIGHT=1 FILES=/src/text/Color.cpp

# as_in_the_repository: makes the empty folder look like the repository: copies of what is written, and its programs, which
# work on the repository itself; ./test has just made the builds.
as_in_the_repository() {
  local program
  cp -r "$repository"/{samples,docs,README.md} .
  ln -s "$repository/build" build
  for program in mova fuzz/run tests/docs/formats-page.sh tests/docs/formats-table.sh; do
    mkdir -p "$(dirname $program)"
    printf '#!/bin/sh\nexec "%s/%s" "$@"\n' "$repository" $program >$program
    chmod +x $program
  done
  cmake() { (cd "$repository" && command cmake "$@"); }
  ! command -v ccache || export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  export HOME=$PWD PKG_CONFIG_PATH=$PWD/.local/lib/pkgconfig:$PWD/.local/lib/$(gcc -print-multiarch)/pkgconfig
}

# block LANGUAGE DOCUMENT: the lines of its blocks in the language.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" "$2" | grep -v '^```'; }

# runs_all DOCUMENT
runs_all() {
  as_in_the_repository
  block cpp "$repository/$1" >program.cpp || true
  local commands=0
  while IFS= read -r line; do
    [ -n "$line" ] || continue
    echo "\$ $line"
    eval "$line" </dev/null
    commands=$((commands + 1))
  done < <(block sh "$repository/$1")
  echo "$commands commands"
  [ "$commands" -gt 0 ]
}

@test "every command of the README" {
  runs_all README.md
  [ -s samples/harbour.converted.srt ]
  [ "$(head -n 1 samples/harbour.vtt)" = WEBVTT ]
  cmp samples/harbour.vtt out.vtt
  cmp samples/harbour.vtt piped.vtt
  [ -s out/1998/kitchen.srt ]
  [ "$(wc -l <report.jsonl)" -eq 2 ]
  [ -x .local/bin/mova ]
  [ -x a.out ]
}

@test "every command of docs/settings.md" { runs_all docs/settings.md; }

@test "every command of docs/adding-a-format.md" {
  runs_all docs/adding-a-format.md
  diff -r docs "$repository/docs"
  diff README.md "$repository/README.md"
}

@test "every command of docs/fuzzing.md" { runs_all docs/fuzzing.md; }

@test "every command of tests/golden/README.md" { runs_all tests/golden/README.md; }

# Commands stand in blocks marked "sh", one a line, and the documents that have such are tried above.
@test "no command stands anywhere else" {
  cd "$repository"
  local documents
  documents=$(find . -name '*.md' -not -path './build/*' | sed 's|^\./||' | LC_ALL=C sort)
  [ "$(grep -l '^```sh$' $documents)" = "README.md
docs/adding-a-format.md
docs/fuzzing.md
docs/settings.md
tests/golden/README.md" ]
  # Of other blocks there are a program, a few lines for CMake, pictures, and samples of formats.
  [ "$(grep -c '^```[^s]' README.md)" -eq 2 ]
  [ "$(grep -l -x '```' $(grep -L '^```[a-z]' $documents))" = "docs/architecture.md
docs/formats.md" ]
  # Indented ones are the launcher and the tests, on top of the README.
  [ "$(sed '/^```/,/^```/d' $documents | grep -c '^    ')" -eq 2 ]
}
