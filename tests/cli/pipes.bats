# Standard input and standard output in the place of files.
load helper

@test "- reads standard input, and writes standard output" {
  caption_file film.srt
  "$mova" convert - --to SubRip <film.srt >out 2>message
  same_bytes out expected_subrip
  [ "$(cat message)" = "standard input: SubRip, 2 captions -> SubRip: /dev/stdout" ]
  cat film.srt | "$mova" convert - --to SubRip --quiet | cmp - out
  cat film.srt | "$mova" convert - --to SubRip --output - --quiet | cat | cmp - out
}

@test "- as input with a file or a folder as output" {
  caption_file film.srt
  run -0 "$mova" convert - --to SubRip --output out.srt <film.srt
  [ "$output" = "standard input: SubRip, 2 captions -> SubRip: out.srt" ]
  same_bytes out.srt expected_subrip
  run -0 "$mova" convert - --output named.srt <film.srt
  same_bytes named.srt expected_subrip
  mkdir folder
  run -0 "$mova" convert - --to SubRip --output folder <film.srt
  same_bytes folder/stdin.srt expected_subrip
}

@test "- as output of a file" {
  caption_file film.srt
  "$mova" convert film.srt --to SubRip --output - --quiet >out
  same_bytes out expected_subrip
}

@test "a whole chain of conversions" {
  long_caption_file film.srt
  "$mova" convert film.srt --to SubRip --output direct.srt --quiet
  "$mova" convert - --to WebVTT --quiet <film.srt | "$mova" convert - --to "SubRip" --quiet >chained.srt
  [ "$(grep -c Line chained.srt)" = 1000 ]
}

@test "a pipe is read to its end, however slowly it comes" {
  caption_file film.srt
  (head -c 30 film.srt; sleep 0.3; tail -c +31 film.srt) | "$mova" convert - --to SubRip --quiet >out
  same_bytes out expected_subrip
}

@test "bytes that are no UTF-8 come through a pipe unchanged" {
  printf 'first line is skipped\n1\n00:00:01,000 --> 00:00:02,000\n\xcf\xf0\xe8\xe2\xe5\xf2\n\n' >old.srt
  cat old.srt | "$mova" convert - --to SubRip --set CodePage=1251 --quiet >out
  cmp out <(printf '1\r\n00:00:01:000 --> 00:00:02:000\r\nПривет\r\n\r\n')
}

@test "only what is left of standard input is read" {
  caption_file film.srt
  (echo "to be skipped"; cat film.srt) >both
  (read -r line; "$mova" convert - --to SubRip --quiet) <both >out
  same_bytes out expected_subrip
}

@test "an empty, a strange and a closed standard input" {
  run -2 "$mova" convert - --to SubRip </dev/null
  [ "$output" = "mova: standard input: the file is empty" ]
  run -2 "$mova" convert - --to SubRip <<<"just a note"
  [[ "$output" == "mova: standard input: not in any format that can be read"* ]]
  run -66 bash -c '"$1" convert - --to SubRip <&-' - "$mova"
  [ "$output" = "mova: standard input: can't be read: Bad file descriptor" ]
  run -66 "$mova" convert - --to SubRip </
  [ "$output" = "mova: standard input: can't be read: Is a directory" ]
}

@test "the file behind standard input is never the output" {
  caption_file film.srt
  cp film.srt before
  run -64 "$mova" convert - --output film.srt <film.srt
  [ "$output" = "mova: standard input: the output (film.srt) would replace the input; name another with --output" ]
  run -64 bash -c '"$1" convert - --to SubRip <film.srt >>film.srt' - "$mova"
  cmp film.srt before
}

@test "a reader that goes away early" {
  long_caption_file film.srt
  for i in {1..60}; do cat film.srt; done >long.srt
  run bash -c 'set -o pipefail; "$1" convert long.srt --to SubRip --output - --quiet | head -c 10 >/dev/null' - "$mova"
  [ "$status" = 141 ]
  [ "$output" = "" ]
}

@test "a full device behind standard output" {
  caption_file film.srt
  run -73 bash -c '"$1" convert - --to SubRip <film.srt >/dev/full' - "$mova"
  [ "$output" = "mova: /dev/stdout: can't be written: No space left on device" ]
}

@test "--to is asked for, and --json has no place in a pipe" {
  caption_file film.srt
  run -64 "$mova" convert - <film.srt
  [[ "$output" == "mova: --to is missing"* ]]
  run -64 "$mova" convert - --to SubRip --json <film.srt
  [ "$output" = "mova: --json and the captions can't both go to standard output" ]
  run -0 --separate-stderr "$mova" convert - --to SubRip --output out.srt --json <film.srt
  [ "$output" = '{"input":"-","format":"SubRip","captions":2,"target":"SubRip","output":"out.srt","status":0,"message":null}' ]
}

@test "detect reads standard input" {
  caption_file film.srt
  run -0 "$mova" detect - <film.srt
  [ "$output" = "standard input: SubRip, 2 captions" ]
  cat film.srt | "$mova" detect film.srt - --json >out
  [ "$(tail -n 1 out)" = '{"input":"-","format":"SubRip","captions":2,"status":0,"message":null}' ]
  run -64 "$mova" detect - - <film.srt
  [ "$output" = "mova: standard input can be read once only" ]
}
