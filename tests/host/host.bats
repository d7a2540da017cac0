# Programs that use the installed library: the public header, libmova.so, and nothing else of the repository.

load ../cli/helper

setup_file() {
  load ../cli/helper
  cmake --install "$build" --prefix "$BATS_FILE_TMPDIR/prefix" >/dev/null
}

prefix=$BATS_FILE_TMPDIR/prefix

# compile SOURCE PROGRAM
compile() {
  local flags=(-std=c++20 -Wall -Wextra -Wpedantic -Werror)
  grep -qi '^MOVA_SANITIZE:BOOL=\(ON\|TRUE\)$' "$build/CMakeCache.txt" && flags+=(-fsanitize=address,undefined)
  local lib
  lib=$(echo "$prefix"/lib*)
  g++ "${flags[@]}" "$1" -I"$prefix/include" -L"$lib" -Wl,-rpath,"$lib" -lmova -o "$2"
}

@test "a host program makes every call of the library" {
  compile "$repository/tests/host/host.cpp" host
  caption_file film.txt
  run -0 ./host film.txt out.txt
  [ "$(grep -v -e '^16-bit' -e '^wide' <<<"$output")" = "released: 0
released: 0
default settings: 0
frame rate: 29.97
own settings: 0
no such target: 1" ]
  diff <(sed -n 's/^16-bit units: //p' <<<"$output") <(sed -n 's/^wide characters: //p' <<<"$output")
  diff <(sed -n 's/^16-bit units: //p' <<<"$output") \
    <("$mova" formats | sed '1d; s/^\(.\{22\}\)\(\S*\).*/\1(\2)/; s/ *(/ (/')
  same_bytes out.srt expected_subrip
  [ -e out.txt.none ]
  [ ! -s out.txt.none ]
  holds_only film.txt host out.srt out.txt.none
}

@test "the program in the README" {
  sed -n '/^```cpp$/,/^```$/p' "$repository/README.md" | sed '1d;$d' >example.cpp
  compile example.cpp example
  caption_file film.srt
  run -0 ./example
  [ "$output" = "" ]
  cmp film.vtt <(printf 'WEBVTT\n\n00:01.000 --> 00:02.500\r\nWho is there?\r\n\n00:03.000 --> 00:04.000\r\n<i>Nobody</i>\r\nat all.')
}

@test "the installed command runs" {
  caption_file film.txt
  run -0 "$prefix/bin/mova" convert film.txt --to SubRip
  same_bytes film.srt expected_subrip
}
