load helper

@test "writes beside the input and tells what happened in one line on standard error" {
  caption_file film.txt
  run --separate-stderr -0 "$mova" convert film.txt --to SubRip
  [ "$output" = "" ]
  [ "$stderr" = "film.txt: SubRip, 2 captions -> SubRip: film.srt" ]
  same_bytes film.srt expected_subrip
  holds_only film.srt film.txt
}

@test "writes into the folder of the input, not into the current one" {
  mkdir films
  caption_file films/film.txt
  run -0 "$mova" convert films/film.txt --to SubRip
  same_bytes films/film.srt expected_subrip
  holds_only films
}

@test "an output that would be the input gets .converted into its name" {
  caption_file film.srt
  cp film.srt before
  run -0 "$mova" convert film.srt --to SubRip
  [ "$output" = "film.srt: SubRip, 2 captions -> SubRip: film.converted.srt" ]
  same_bytes film.converted.srt expected_subrip
  cmp film.srt before
}

@test "one caption is told in the singular" {
  printf '\xef\xbb\xbf1\n00:00:01,000 --> 00:00:02,000\nAlone.\n\n' >one.txt
  run -0 "$mova" convert one.txt --to SubRip
  [ "$output" = "one.txt: SubRip, 1 caption -> SubRip: one.srt" ]
}

@test "--quiet says nothing" {
  caption_file film.txt
  run -0 "$mova" convert film.txt --to SubRip --quiet
  [ "$output" = "" ]
  same_bytes film.srt expected_subrip
}

@test "--json prints one object on standard output and nothing else" {
  caption_file film.txt
  run --separate-stderr -0 "$mova" convert film.txt --to SubRip --json
  [ "$output" = '{"input":"film.txt","format":"SubRip","captions":2,"target":"SubRip","output":"film.srt","status":0,"message":null}' ]
  [ "$stderr" = "" ]
}

@test "--json tells of a failure too" {
  run --separate-stderr -66 "$mova" convert gone.srt --to SubRip --json
  [ "$output" = '{"input":"gone.srt","format":null,"captions":0,"target":"SubRip","output":null,"status":66,"message":"gone.srt: can'"'"'t be opened: No such file or directory"}' ]
  [ "$stderr" = "mova: gone.srt: can't be opened: No such file or directory" ]
}

# --- Targets.

@test "a format is named in any case and with or without blanks" {
  caption_file film.txt
  for name in SubRip subrip "SUB RIP" " sub r ip "; do
    rm -f film.srt
    run -0 "$mova" convert film.txt --to "$name"
    same_bytes film.srt expected_subrip
  done
}

@test "a format is named by an extension that it alone has, with or without the dot" {
  caption_file film.txt
  for extension in srt .srt SRT; do
    rm -f film.srt
    run -0 "$mova" convert film.txt --to "$extension"
    same_bytes film.srt expected_subrip
  done
}

@test "without --to the extension of the output decides" {
  caption_file film.txt
  run -0 "$mova" convert film.txt --output other.SRT
  same_bytes other.srt expected_subrip
}

@test "without --to and an extension the command asks for a format" {
  caption_file film.txt
  for output in "" other .hidden ends. folder.d/other; do
    run -64 "$mova" convert film.txt ${output:+--output "$output"}
    [ "$output" = "mova: --to is missing: name the format to convert to, as in --to WebVTT (mova formats lists all)" ]
  done
  holds_only film.txt
}

@test "an unknown format is refused with the nearest names, and nothing is written" {
  caption_file film.txt
  run -64 "$mova" convert film.txt --to SubRib
  [ "$output" = 'mova: unknown format "SubRib"; did you mean SubRip? (mova formats lists all)' ]
  run -64 "$mova" convert film.txt --to zzzzzzzz
  [ "$output" = 'mova: unknown format "zzzzzzzz" (mova formats lists all)' ]
  run -64 "$mova" convert film.txt --to ""
  [ "$output" = 'mova: unknown format "" (mova formats lists all)' ]
  run -64 "$mova" convert film.txt --output film.mkv
  [[ "$output" == 'mova: unknown format ".mkv"'* ]]
  holds_only film.txt
}

@test "an extension of several formats is refused with their names" {
  caption_file film.txt
  run -64 "$mova" convert film.txt --output film.cap
  [ "$output" = 'mova: several formats have the extension ".cap"; name one of them with --to: CapMaker Plus, Cheetah Caption' ]
  holds_only film.txt
}

@test "a format that can only be read gives its notice, and the user is told" {
  caption_file film.txt
  run -0 "$mova" convert film.txt --to "cheetah caption"
  [ "$output" = "mova: film.txt: Cheetah Caption can only be read; film.cap holds a notice instead of captions" ]
  [ "$(cat film.cap)" = "Not supported!" ]
}

# --- Inputs.

@test "an input that does not exist" {
  run -66 "$mova" convert gone.srt --to SubRip
  [ "$output" = "mova: gone.srt: can't be opened: No such file or directory" ]
  run -66 "$mova" convert "" --to SubRip
  [ "$output" = "mova: the name of the input is empty" ]
  holds_only
}

@test "a directory as input" {
  mkdir films
  run -66 "$mova" convert films --to SubRip
  [ "$output" = "mova: films: is a directory; name a caption file in it" ]
  holds_only films
}

@test "an input without permission to read" {
  caption_file secret.srt
  chmod 000 secret.srt
  run -66 unprivileged "$mova" convert secret.srt --to SubRip
  [ "$output" = "mova: secret.srt: can't be opened: Permission denied" ]
  holds_only secret.srt
}

@test "an input in a folder without permission to enter" {
  mkdir closed
  caption_file closed/film.srt
  chmod 000 closed
  run -66 unprivileged "$mova" convert closed/film.srt --to SubRip
  [ "$output" = "mova: closed/film.srt: can't be opened: Permission denied" ]
  chmod 755 closed
}

@test "a pipe or a device as input is refused and not waited for" {
  mkfifo pipe
  run -66 timeout 20 "$mova" convert pipe --to SubRip
  [ "$output" = "mova: pipe: is a device or a pipe; save its content to a file first" ]
  run -66 timeout 20 "$mova" convert /dev/zero --to SubRip --output out.srt
  [ "$output" = "mova: /dev/zero: is a device or a pipe; save its content to a file first" ]
  holds_only pipe
}

@test "an empty file" {
  : >empty.srt
  run -2 "$mova" convert empty.srt --to SubRip --output out.srt
  [ "$output" = "mova: empty.srt: the file is empty" ]
  holds_only empty.srt
}

@test "a binary file" {
  head -c 5000 "$mova" >tool.srt
  run -2 "$mova" convert tool.srt --to SubRip --output out.srt
  [ "$output" = "mova: tool.srt: not in any format that can be read (mova formats lists them); is it text in an old encoding? Name that, as in --set CodePage=1251" ]
  holds_only tool.srt
}

@test "an input in no format leaves an existing output as it is" {
  echo "just a note" >note.txt
  echo "precious" >out.srt
  run -2 "$mova" convert note.txt --to SubRip --output out.srt --set CodePage=1252
  [ "$output" = "mova: note.txt: not in any format that can be read (mova formats lists them)" ]
  [ "$(cat out.srt)" = precious ]
}

@test "names with blanks and letters of many scripts, whatever the locale" {
  caption_file "Früh am Tag (日本 🎬).txt"
  for locale in C C.UTF-8; do
    LC_ALL=$locale run -0 "$mova" convert "Früh am Tag (日本 🎬).txt" --to SubRip
    [ "$output" = "Früh am Tag (日本 🎬).txt: SubRip, 2 captions -> SubRip: Früh am Tag (日本 🎬).srt" ]
    same_bytes "Früh am Tag (日本 🎬).srt" expected_subrip
    rm "Früh am Tag (日本 🎬).srt"
  done
}

@test "a name that is not UTF-8" {
  caption_file $'caf\xe9.srt'
  run -66 "$mova" convert $'caf\xe9.srt' --to SubRip
  [[ "$output" == *"the name is not UTF-8; rename the file or link to it by another name" ]]
  run -66 --separate-stderr "$mova" convert $'caf\xe9.srt' --to SubRip --json
  [[ "$output" == '{"input":"caf�.srt",'* ]]
  caption_file film.srt
  run -73 "$mova" convert film.srt --to SubRip --output $'caf\xe8'
  [[ "$output" == *"the name is not UTF-8" ]]
  holds_only $'caf\xe9.srt' film.srt
}

@test "control characters of a name don't reach the terminal" {
  run -66 "$mova" convert $'a\e[31m\nb.srt' --to SubRip
  [ "$output" = "mova: a?[31m?b.srt: can't be opened: No such file or directory" ]
}

@test "a name that starts with a dash" {
  caption_file ./-film.txt
  run -0 "$mova" convert --to SubRip -- -film.txt
  same_bytes ./-film.srt expected_subrip
}

@test "an input path of 259 bytes is converted, one of 260 is refused" {
  folder=$(printf 'd%.0s' {1..200})
  mkdir "$folder"
  fits=$folder/$(printf 'f%.0s' {1..54}).srt
  [ ${#fits} = 259 ]
  caption_file "$fits"
  run -0 "$mova" convert "$fits" --to SubRip --output out.srt
  same_bytes out.srt expected_subrip
  caption_file "${fits%.srt}f.srt"
  run -66 "$mova" convert "${fits%.srt}f.srt" --to SubRip --output out.srt
  [[ "$output" == *": the path has 260 bytes, and at most 259 can be opened; go into its folder and name it from there, or link to it by a shorter path" ]]
}

# --- Outputs.

@test "the output gets the extension of its format" {
  caption_file film.txt
  run -0 "$mova" convert film.txt --to SubRip --output out.vtt
  [ "$output" = "film.txt: SubRip, 2 captions -> SubRip: out.srt" ]
  run -0 "$mova" convert film.txt --to SubRip --output bare
  [ "$output" = "film.txt: SubRip, 2 captions -> SubRip: bare.srt" ]
  run -0 "$mova" convert film.txt --to SubRip --output .hidden
  [ "$output" = "film.txt: SubRip, 2 captions -> SubRip: .hidden.srt" ]
  holds_only .hidden.srt bare.srt film.txt out.srt
}

@test "a dot in the name of a folder is not an extension" {
  caption_file film.txt
  mkdir season.1
  run -0 "$mova" convert film.txt --to SubRip --output season.1/film
  run -0 "$mova" convert film.txt --to SubRip --output ./other
  same_bytes season.1/film.srt expected_subrip
  same_bytes other.srt expected_subrip
  holds_only film.txt other.srt season.1
}

@test "a directory as output takes a file named after the input" {
  caption_file film.txt
  mkdir out.d
  run -0 "$mova" convert film.txt --to SubRip --output out.d
  same_bytes out.d/film.srt expected_subrip
  rm out.d/film.srt
  run -0 "$mova" convert film.txt --to SubRip --output out.d/
  same_bytes out.d/film.srt expected_subrip
}

@test "an output path of more than 260 bytes" {
  caption_file film.txt
  folder=$(printf 'd%.0s' {1..200})
  mkdir -p "$folder/$folder"
  run -0 "$mova" convert film.txt --to SubRip --output "$folder/$folder/film"
  same_bytes "$folder/$folder/film.srt" expected_subrip
}

@test "an output in a folder that does not exist" {
  caption_file film.txt
  run -73 "$mova" convert film.txt --to SubRip --output nowhere/out.srt
  [ "$output" = "mova: nowhere/out.srt: can't be written: there is no such directory" ]
  run -73 "$mova" convert film.txt --to SubRip --output nowhere/
  [ "$output" = "mova: nowhere/: can't be written: there is no such directory" ]
  holds_only film.txt
}

@test "an output path that goes through a file" {
  caption_file film.txt
  run -73 "$mova" convert film.txt --to SubRip --output film.txt/out.srt
  [ "$output" = "mova: film.txt/out.srt: can't be written: Not a directory" ]
}

@test "an output in a folder without permission to write" {
  caption_file film.txt
  mkdir closed
  chmod 555 closed
  run -73 unprivileged "$mova" convert film.txt --to SubRip --output closed/out.srt
  [ "$output" = "mova: closed/out.srt: can't be written: Permission denied" ]
}

@test "an existing output that is write-protected" {
  caption_file film.txt
  echo precious >out.srt
  chmod 444 out.srt
  run -73 unprivileged "$mova" convert film.txt --to SubRip --output out.srt
  [ "$output" = "mova: out.srt: can't be written: Permission denied" ]
  [ "$(cat out.srt)" = precious ]
  holds_only film.txt out.srt
}

@test "a directory that has the name of the output" {
  caption_file film.txt
  mkdir film.srt
  run -73 "$mova" convert film.txt --to SubRip
  [ "$output" = "mova: film.srt: can't be written: is a directory" ]
  holds_only film.srt film.txt
}

@test "an output name that is too long" {
  caption_file film.txt
  run -73 "$mova" convert film.txt --to SubRip --output "$(printf 'x%.0s' {1..300})"
  [[ "$output" == *": can't be written: File name too long" ]]
  holds_only film.txt
}

@test "an empty output name" {
  caption_file film.txt
  run -64 "$mova" convert film.txt --to SubRip --output ""
  [ "$output" = "mova: --output is empty: name a file or a directory" ]
  holds_only film.txt
}

@test "an existing output is replaced and keeps its rights" {
  caption_file film.txt
  echo old >out.srt
  chmod 640 out.srt
  run -0 "$mova" convert film.txt --to SubRip --output out.srt
  same_bytes out.srt expected_subrip
  [ "$(stat -c %a out.srt)" = 640 ]
  holds_only film.txt out.srt
}

@test "a new output has the rights that the user's mask leaves" {
  caption_file film.txt
  umask 027
  run -0 "$mova" convert film.txt --to SubRip
  [ "$(stat -c %a film.srt)" = 640 ]
}

@test "an output that is a link stays one; what it points to is written" {
  caption_file film.txt
  mkdir real
  echo old >real/target.srt
  ln -s real/target.srt link.srt
  ln -s real/new.srt dangling.srt
  run -0 "$mova" convert film.txt --to SubRip --output link.srt
  run -0 "$mova" convert film.txt --to SubRip --output dangling.srt
  [ -L link.srt ]
  [ -L dangling.srt ]
  same_bytes real/target.srt expected_subrip
  same_bytes real/new.srt expected_subrip
}

@test "a ring of links as output" {
  caption_file film.txt
  ln -s b.srt a.srt
  ln -s a.srt b.srt
  run -73 "$mova" convert film.txt --to SubRip --output a.srt
  [[ "$output" == *": can't be written: too many levels of symbolic links" ]]
}

@test "the full device" {
  caption_file film.txt
  run -73 "$mova" convert film.txt --to SubRip --output /dev/full
  [ "$output" = "mova: /dev/full: can't be written: No space left on device" ]
  [ ! -e /dev/full.srt ]
}

# leaves_the_old_output LIMIT: under that limit the command fails, the old output stays, and nothing else is left. LIMIT
# is shell text that leaves less room in the folder `disk` than the output needs.
leaves_the_old_output() {
  bash -c '
    eval "$2" || exit 1
    echo precious >disk/out.srt
    "$1" convert film.txt --to SubRip --output disk/out.srt
    status=$?
    [ "$(ls -A disk)" = out.srt ] && [ "$(cat disk/out.srt)" = precious ] || exit 2
    exit $status' - "$mova" "$1"
}

@test "a limit on the size of files: the old output stays, and nothing half-written is left" {
  long_caption_file film.txt
  mkdir disk
  run -73 leaves_the_old_output 'ulimit -f 8'
  [ "$output" = "mova: disk/out.srt: can't be written: File too large" ]
}

@test "a full disk: the old output stays, and nothing half-written is left" {
  long_caption_file film.txt
  mkdir disk
  export -f leaves_the_old_output
  export mova
  local namespace=(unshare -m)
  ((EUID == 0)) || namespace=(unshare -rm)
  if "${namespace[@]}" mount -t tmpfs tmpfs disk 2>/dev/null; then
    run -73 "${namespace[@]}" bash -c 'leaves_the_old_output "mount -t tmpfs -o size=32k tmpfs disk"'
    [ "$output" = "mova: disk/out.srt: can't be written: No space left on device" ]
  else  # A container that lets nobody mount: the write fails for another reason, in the middle too.
    run -73 leaves_the_old_output 'ulimit -f 20'
    [ "$output" = "mova: disk/out.srt: can't be written: File too large" ]
  fi
}

@test "standard output as output holds the captions and nothing else" {
  caption_file film.txt
  "$mova" convert film.txt --to SubRip --output /dev/stdout >piped 2>message
  same_bytes piped expected_subrip
  [ "$(cat message)" = "film.txt: SubRip, 2 captions -> SubRip: /dev/stdout" ]
  "$mova" convert film.txt --to SubRip --output /dev/stdout --quiet | cmp - piped
  echo "before" >appended
  "$mova" convert film.txt --to SubRip --output /dev/stdout --quiet >>appended
  cmp appended <(echo before; expected_subrip)
}

@test "a closed standard output stays closed" {
  caption_file film.txt
  run -0 bash -c '"$1" convert film.txt --to SubRip --quiet >&-' - "$mova"
  [ "$output" = "" ]
  same_bytes film.srt expected_subrip
  run -73 bash -c '"$1" convert film.txt --to SubRip --json >&-' - "$mova"
  [ "$output" = "mova: standard output can't be written: Bad file descriptor" ]
}

@test "a named pipe as output" {
  caption_file film.txt
  mkfifo pipe
  cat pipe >received &
  run -0 timeout 20 "$mova" convert film.txt --to SubRip --output pipe
  wait
  same_bytes received expected_subrip
  [ -p pipe ]
}

# --- The input is never lost.

input_is_refused_as_output() {
  cp film.srt before
  run -64 "$mova" convert film.srt --to SubRip --output "$1"
  [[ "$output" == "mova: film.srt: the output"*" would replace the input; name another with --output" ]]
  cmp film.srt before
}

@test "the input as output is refused" {
  caption_file film.srt
  input_is_refused_as_output film.srt
  input_is_refused_as_output ./film.srt
  input_is_refused_as_output film
  input_is_refused_as_output film.vtt
  input_is_refused_as_output "$PWD/../${PWD##*/}/film.srt"
  holds_only before film.srt
}

@test "the input as output through a symbolic link is refused" {
  caption_file film.srt
  ln -s film.srt link.srt
  input_is_refused_as_output link.srt
  ln -s . loop
  input_is_refused_as_output loop/film.srt
}

@test "the input as output through a hard link is refused" {
  caption_file film.srt
  ln film.srt hard.srt
  input_is_refused_as_output hard.srt
}

@test "a link as input and its target as output is refused" {
  caption_file real.srt
  cp real.srt before
  ln -s real.srt film.txt
  run -64 "$mova" convert film.txt --to SubRip --output real.srt
  [ "$output" = "mova: film.txt: the output (real.srt) would replace the input; name another with --output" ]
  cmp real.srt before
}

@test "standard output appended to the input is refused" {
  caption_file film.srt
  cp film.srt before
  "$mova" convert film.srt --to SubRip --output /dev/stdout >>film.srt 2>message && status=0 || status=$?
  [ "$status" = 64 ]
  cmp film.srt before
}

@test "beside an input that is reached through a link, the link's target is not replaced" {
  caption_file real.txt
  cp real.txt before
  ln -s real.txt film.srt
  run -0 "$mova" convert film.srt --to SubRip
  same_bytes film.converted.srt expected_subrip
  cmp real.txt before
}
