# Many files in one call.
load helper

setup() {
  mkdir "$BATS_TEST_TMPDIR/work"
  cd "$BATS_TEST_TMPDIR/work"
  export TMPDIR=$BATS_TEST_TMPDIR
}

# Captions files a.srt, b.srt and c.srt in the folder `in`.
three_files() {
  mkdir -p in
  for name in a b c; do caption_file in/$name.srt; done
}

# The files below the folder are these and nothing else: no temporary file was left.
holds_files() {
  diff <(cd "$1" && find . ! -type d -printf '%P\n' | LC_ALL=C sort) <((($# == 1)) || printf '%s\n' "${@:2}" | LC_ALL=C sort)
}

# Folder `in` with inputs 1000.srt and on: links to a long file.
many_files() {
  mkdir in
  long_caption_file long.srt
  perl -e 'link("long.srt", "in/$_.srt") || die $! for 1000 .. 999 + $ARGV[0]' "$1"
}

# So many that a run over them lasts far longer than it takes to look at it: sets `count`.
files_for_seconds() {
  count=4000
  if [[ $build == *asan* ]]; then count=400; fi
  many_files $count
}

@test "files land in the folder under their names, told in the order of the inputs" {
  three_files
  run --separate-stderr -0 "$mova" convert in/c.srt in/a.srt in/b.srt --to SubRip --output-dir out
  [ "$output" = "" ]
  [ "$stderr" = "in/c.srt: SubRip, 2 captions -> SubRip: out/c.srt
in/a.srt: SubRip, 2 captions -> SubRip: out/a.srt
in/b.srt: SubRip, 2 captions -> SubRip: out/b.srt
mova: 3 converted" ]
  for name in a b c; do same_bytes out/$name.srt expected_subrip; done
  holds_files out a.srt b.srt c.srt
}

@test "one file in a folder for outputs, too" {
  caption_file film.srt
  run -0 "$mova" convert film.srt --to SubRip --output-dir some/where/out
  same_bytes some/where/out/film.srt expected_subrip
}

@test "the order stays the same with any number of workers" {
  mkdir in
  for i in {10..40}; do caption_file in/$i.txt; done
  echo junk >in/20.txt
  for jobs in 1 2 7 100; do
    run -2 "$mova" convert in --recursive --to SubRip --output-dir out --jobs $jobs
    [ "${#lines[@]}" = 32 ]
    [[ "${lines[0]}" == in/10.txt:* ]]
    [[ "${lines[10]}" == "mova: in/20.txt: not in any format"* ]]
    [[ "${lines[30]}" == in/40.txt:* ]]
    [ "${lines[31]}" = "mova: 30 converted, 1 failed" ]
  done
}

@test "each file becomes what a process that does nothing else makes of it" {
  mkdir in
  for sample in "$repository"/samples/* "$repository"/tests/golden/TimedText*/*.xml; do
    name=$(basename "$sample")
    cp "$sample" "in/${name//./-}.${name##*.}"
  done
  for target in WebVTT "Timed Text 1.0" "Sub Station Alpha" "Final Cut Pro X Xml"; do
    rm -rf out single
    mkdir single
    "$mova" convert in --recursive --to "$target" --output-dir out --quiet --jobs 3 || [ $? -le 2 ]
    for input in in/*; do
      "$mova" convert "$input" --to "$target" --output single --quiet || [ $? -le 2 ]
    done
    diff -r out single
  done
}

@test "a worker's files become what files of other workers become, whatever the target" {
  mkdir in
  local i=0
  for sample in "$repository"/tests/golden/*/*.{xml,dfxp,srt,sub,scc}; do
    cp "$sample" "in/$((++i)).${sample##*.}"
  done
  ((i > 20))
  "$mova" formats --json | grep -o '"name": "[^"]*"' | cut -d '"' -f 4 >targets
  while read -r target; do
    rm -rf together apart
    "$mova" convert in --recursive --to "$target" --output-dir together --quiet --jobs 1 || [ $? -le 2 ]
    # With that many workers each has one file.
    "$mova" convert in --recursive --to "$target" --output-dir apart --quiet --jobs 200 || [ $? -le 2 ]
    diff -r -I '<dcst:IssueDate>' together apart  # a time of day
  done <targets
}

@test "a folder keeps its subfolders, and its files come sorted by their bytes" {
  mkdir -p "in/s 1/deep" in/B
  for name in z "s 1/a" "s 1/deep/b" B/c ä; do caption_file "in/$name.srt"; done
  run -0 "$mova" convert in --recursive --to SubRip --output-dir out
  [ "$output" = "in/B/c.srt: SubRip, 2 captions -> SubRip: out/B/c.srt
in/s 1/a.srt: SubRip, 2 captions -> SubRip: out/s 1/a.srt
in/s 1/deep/b.srt: SubRip, 2 captions -> SubRip: out/s 1/deep/b.srt
in/z.srt: SubRip, 2 captions -> SubRip: out/z.srt
in/ä.srt: SubRip, 2 captions -> SubRip: out/ä.srt
mova: 5 converted" ]
  holds_files out B/c.srt "s 1/a.srt" "s 1/deep/b.srt" z.srt ä.srt
}

@test "an output folder inside the input folder is not looked into, and the report is no input" {
  three_files
  cd in
  for turn in 1 2; do
    run -0 "$mova" convert . --recursive --to SubRip --output-dir out --report report.jsonl
    [ "${lines[3]}" = "mova: 3 converted" ]
  done
  holds_files . a.srt b.srt c.srt out/a.srt out/b.srt out/c.srt report.jsonl
}

@test "outputs go beside the inputs if that is the folder for them" {
  three_files
  run -0 "$mova" convert in --recursive --to WebVTT --output-dir in
  holds_files in a.srt a.vtt b.srt b.vtt c.srt c.vtt
  run -64 "$mova" convert in --recursive --to WebVTT --output-dir in
  [[ "$output" == "mova: in/"* ]]
}

@test "links to folders are not followed" {
  three_files
  ln -s . in/round
  run -66 timeout 60 "$mova" convert in --recursive --to SubRip --output-dir out
  [ "${lines[3]}" = "mova: in/round: is a directory; name a caption file in it" ]
  [ "${lines[4]}" = "mova: 3 converted, 1 failed" ]
}

# --- Wrong usage: nothing is written.

batch_is_refused() {
  run -64 "$mova" convert "${@:2}"
  [ "$output" = "mova: $1" ]
  [ ! -e out ]
}

@test "a folder without --recursive" {
  three_files
  batch_is_refused "in: is a folder; --recursive takes the files in it" in --to SubRip --output-dir out
  batch_is_refused "in: is a folder; --recursive takes the files in it" --files-from <(echo in) --to SubRip --output-dir out
}

@test "several inputs without a folder for the outputs" {
  three_files
  batch_is_refused "several inputs need --output-dir: name a folder for the outputs" in/a.srt in/b.srt --to SubRip
}

@test "options that are for many files only" {
  for option in --recursive "--jobs 2" "--timeout 5" "--memory 1G" --resume "--report r" "--progress plain" "--files-from list"; do
    batch_is_refused "${option%% *} goes with --output-dir: name a folder for the outputs" film.srt --to SubRip $option
  done
  holds_only
}

@test "options that exclude each other or have no sense" {
  caption_file film.srt
  batch_is_refused "--output and --output-dir can't go together" film.srt --to SubRip --output-dir out --output x.srt
  batch_is_refused "--output-dir is empty: name a folder" film.srt --to SubRip --output-dir ""
  batch_is_refused "standard input has no name that an output in --output-dir could get; use --output" - --to SubRip --output-dir out
  batch_is_refused "--to is missing: name the format to convert to, as in --to WebVTT (mova formats lists all)" film.srt --output-dir out
  for wrong in "--jobs 0" "--jobs -1" "--jobs x" "--timeout 0" "--timeout x" "--timeout nan" "--timeout 1e300" "--memory x" "--memory -5M" "--memory 0" "--memory 5X" "--memory 5MM" "--memory M" "--memory 99999999T" "--progress bar"; do
    run -64 "$mova" convert film.srt --to SubRip --output-dir out $wrong
    [[ "$output" == "mova: ${wrong%% *}: "* ]]
  done
  holds_only film.srt
}

# --- Lists of names.

@test "names come from a list, one on a line" {
  three_files
  printf 'in/b.srt\n\nin/a.srt' >list
  run -0 "$mova" convert in/c.srt --files-from list --to SubRip --output-dir out
  [ "${lines[0]%%:*} ${lines[1]%%:*} ${lines[2]%%:*}" = "in/c.srt in/b.srt in/a.srt" ]
  holds_files out a.srt b.srt c.srt
}

@test "names come from standard input, ended by zero bytes" {
  three_files
  caption_file $'in/line\nbreak.srt'
  find in -type f -print0 >list
  run -0 "$mova" convert --files-from - --to SubRip --output-dir out <list
  holds_files out a.srt b.srt c.srt $'line\nbreak.srt'
}

@test "an empty list is no mistake" {
  run -0 "$mova" convert --files-from - --to SubRip --output-dir out </dev/null
  [ "$output" = "mova: 0 converted" ]
}

@test "a list that can't be read" {
  run -66 "$mova" convert --files-from gone --to SubRip --output-dir out
  [ "$output" = "mova: gone: the list can't be read: No such file or directory" ]
  run -66 "$mova" convert --files-from . --to SubRip --output-dir out
  [ "$output" = "mova: .: the list can't be read: Is a directory" ]
  run -66 bash -c '"$1" convert --files-from - --to SubRip --output-dir out <&-' - "$mova"
  [ "$output" = "mova: standard input: the list can't be read: Bad file descriptor" ]
  holds_only
}

@test "a list that is no list" {
  head -c 300000 /dev/zero | tr '\0' x >list
  run -64 "$mova" convert --files-from list --to SubRip --output-dir out
  [[ "$output" == "mova: list: the list has a name of more than 4095 bytes: xxxx"*... ]]
  holds_only list
}

@test "a temporary folder that is not there" {
  caption_file film.srt
  TMPDIR=/nowhere run -73 "$mova" convert film.srt --to SubRip --output-dir out
  [ "$output" = "mova: /nowhere: no temporary file can be written there: No such file or directory" ]
  holds_only film.srt
}

# --- Outputs in each other's way.

@test "two inputs with the same output are refused before anything is written" {
  mkdir x y
  caption_file x/film.srt
  caption_file y/film.txt
  batch_is_refused "x/film.srt and y/film.txt would both be written to out/film.vtt; convert them into different folders" \
    x/film.srt y/film.txt --to WebVTT --output-dir out
  batch_is_refused "x/film.srt and x/film.srt would both be written to out/film.vtt; convert them into different folders" \
    x/film.srt x/film.srt --to WebVTT --output-dir out
}

@test "two outputs that are the same through links are refused" {
  mkdir -p in/x in/y real there
  caption_file in/x/film.srt
  caption_file in/y/film.srt
  ln -s "$PWD/real" there/x
  ln -s "$PWD/real" there/y
  run -64 "$mova" convert in --recursive --to WebVTT --output-dir there
  [ "$output" = "mova: in/x/film.srt and in/y/film.srt would both be written to there/y/film.vtt; convert them into different folders" ]
  rm there/*
  mkdir there/x there/y
  ln -s "$PWD/real/new.vtt" there/x/film.vtt
  ln -s "$PWD/real/new.vtt" there/y/film.vtt
  run -64 "$mova" convert in --recursive --to WebVTT --output-dir there
  [[ "$output" == *"would both be written to"* ]]
  holds_files real
}

@test "an output that is an input is refused, by name and by link" {
  three_files
  cp in/a.srt before
  for folder in in in/../in "$PWD/in"; do
    run -64 "$mova" convert in/a.srt in/b.srt --to SubRip --output-dir "$folder"
    [[ "$output" == "mova: in/"?".srt: the output $folder/"?".srt would replace the input in/"?".srt; name another place" ]]
  done
  mkdir links
  ln in/b.srt links/a.vtt
  run -64 "$mova" convert in/a.srt in/b.srt --to WebVTT --output-dir links
  [ "$output" = "mova: in/a.srt: the output links/a.vtt would replace the input in/b.srt; name another place" ]
  ln -sf "$PWD/in/b.srt" links/a.vtt
  run -64 "$mova" convert in/a.srt in/b.srt --to WebVTT --output-dir links
  [ "$output" = "mova: in/a.srt: the output links/a.vtt would replace the input in/b.srt; name another place" ]
  for name in a b c; do cmp in/$name.srt before; done
}

@test "a report that is an input or an output is refused" {
  three_files
  cp in/a.srt before
  run -64 "$mova" convert in/a.srt in/b.srt --to WebVTT --output-dir out --report in/b.srt
  [ "$output" = "mova: the report in/b.srt would replace the input in/b.srt; name another place" ]
  cmp in/b.srt before
  run -64 "$mova" convert in/a.srt --to WebVTT --output-dir out --report out/a.vtt
  [ "$output" = "mova: in/a.srt and the report would both be written to out/a.vtt; convert them into different folders" ]
  [ ! -e out ]
}

@test "many links to one input are no clash" {
  caption_file film.srt
  mkdir in
  for i in {1..20}; do ln film.srt in/$i.srt; done
  run -0 "$mova" convert in --recursive --to SubRip --output-dir out
  [ "${lines[20]}" = "mova: 20 converted" ]
}

# --- Results for programs.

@test "--json prints an object for each input, and nothing else" {
  three_files
  run --separate-stderr -0 "$mova" convert in/a.srt in/b.srt --to SubRip --output-dir out --json
  [ "$output" = '{"input":"in/a.srt","format":"SubRip","captions":2,"target":"SubRip","output":"out/a.srt","status":0,"message":null,"skipped":false}
{"input":"in/b.srt","format":"SubRip","captions":2,"target":"SubRip","output":"out/b.srt","status":0,"message":null,"skipped":false}' ]
  [ "$stderr" = "" ]
}

@test "--json tells each input once, however many there are" {
  mkdir in
  for i in {1..300}; do caption_file in/$i.srt; done
  "$mova" convert in --recursive --to SubRip --output-dir out --json --jobs 8 >lines
  [ "$(wc -l <lines)" = 300 ]
  [ "$(sort -u lines | wc -l)" = 300 ]
}

@test "--quiet says nothing on success" {
  three_files
  run -0 "$mova" convert in --recursive --to SubRip --output-dir out --quiet
  [ "$output" = "" ]
  echo junk >in/d.srt
  run -2 "$mova" convert in --recursive --to SubRip --output-dir out --quiet
  [ "${#lines[@]}" = 1 ]
}

@test "the report tells the fate of each input" {
  three_files
  echo junk >in/b.srt
  run -66 "$mova" convert in/a.srt gone.srt in/b.srt --to SubRip --output-dir out --report report.jsonl
  [ "$(cat report.jsonl)" = '{"input":"in/a.srt","format":"SubRip","captions":2,"target":"SubRip","output":"out/a.srt","status":0,"message":null,"skipped":false}
{"input":"gone.srt","format":null,"captions":0,"target":"SubRip","output":null,"status":66,"message":"gone.srt: can'"'"'t be opened: No such file or directory","skipped":false}
{"input":"in/b.srt","format":null,"captions":0,"target":"SubRip","output":null,"status":2,"message":"in/b.srt: not in any format that can be read (mova formats lists them); is it text in an old encoding? Name that, as in --set CodePage=1251","skipped":false}' ]
}

@test "a report that can't be written" {
  three_files
  run -73 "$mova" convert in/a.srt --to SubRip --output-dir out --report nowhere/report
  [ "$output" = "mova: nowhere/report: the report can't be written: No such file or directory" ]
  [ ! -e out/a.srt ]
  run -73 "$mova" convert in/a.srt --to SubRip --output-dir out --report /dev/full
  [[ "$output" == *"mova: /dev/full: the report can't be written: No space left on device" ]]
  same_bytes out/a.srt expected_subrip
}

# --- Going on.

@test "--resume passes over what is there and not older than its input" {
  three_files
  run -0 "$mova" convert in/a.srt in/b.srt --to SubRip --output-dir out
  touch -d '1 hour ago' out/b.srt
  run -0 "$mova" convert in/a.srt in/b.srt in/c.srt --to SubRip --output-dir out --resume --report report
  [ "$output" = "in/a.srt: skipped; out/a.srt is up to date
in/b.srt: SubRip, 2 captions -> SubRip: out/b.srt
in/c.srt: SubRip, 2 captions -> SubRip: out/c.srt
mova: 2 converted, 1 skipped" ]
  [ "$(head -n 1 report)" = '{"input":"in/a.srt","format":null,"captions":0,"target":"SubRip","output":"out/a.srt","status":0,"message":null,"skipped":true}' ]
}

@test "--resume tries again what failed, and what is empty" {
  three_files
  echo junk >in/b.srt
  mkdir out
  : >out/a.srt
  run -2 "$mova" convert in/a.srt in/b.srt --to SubRip --output-dir out --resume
  [[ "${lines[0]}" == "in/a.srt: SubRip, 2 captions -> "* ]]
  run -2 "$mova" convert in/a.srt in/b.srt --to SubRip --output-dir out --resume
  [ "${lines[0]}" = "in/a.srt: skipped; out/a.srt is up to date" ]
  [[ "${lines[1]}" == "mova: in/b.srt: not in any format"* ]]
  [ "${lines[2]}" = "mova: 0 converted, 1 failed, 1 skipped" ]
}

@test "an existing output is replaced and keeps its rights" {
  three_files
  mkdir out
  echo old >out/a.srt
  chmod 640 out/a.srt
  run -0 "$mova" convert in/a.srt --to SubRip --output-dir out
  same_bytes out/a.srt expected_subrip
  [ "$(stat -c %a out/a.srt)" = 640 ]
}

# --- Inputs that are no good; the others are converted all the same.

@test "a folder without permission to read" {
  three_files
  mkdir in/closed
  caption_file in/closed/d.srt
  chmod 000 in/closed
  run -66 unprivileged "$mova" convert in --recursive --to SubRip --output-dir out --report report
  chmod 755 in/closed
  [ "${lines[3]}" = "mova: in/closed: can't be opened: Permission denied" ]
  [ "${lines[4]}" = "mova: 3 converted, 1 failed" ]
  grep -F '{"input":"in/closed","format":null,"captions":0,"target":"SubRip","output":null,"status":66,' report
  holds_files out a.srt b.srt c.srt
}

@test "the named folder itself without permission to read" {
  three_files
  mkdir closed
  chmod 000 closed
  run -66 unprivileged "$mova" convert closed in --recursive --to SubRip --output-dir out
  [ "${lines[0]}" = "mova: closed: can't be opened: Permission denied" ]
  [ "${lines[4]}" = "mova: 3 converted, 1 failed" ]
}

@test "names that are not UTF-8" {
  three_files
  caption_file $'in/caf\xe9.srt'
  run -66 "$mova" convert in --recursive --to SubRip --output-dir out --report report
  [[ "$output" == *$'in/caf\xe9.srt: the name is not UTF-8; rename the file or link to it by another name'* ]]
  [[ "$output" == *"mova: 3 converted, 1 failed" ]]
  grep '"input":"in/caf�.srt"' report
  run -73 "$mova" convert in/a.srt --to SubRip --output-dir $'caf\xe9'
  [[ "$output" == *"the name is not UTF-8"* ]]
}

@test "dangling links, pipes, devices, folders behind links and empty files" {
  three_files
  mkfifo in/pipe
  ln -s nowhere in/dangling
  ln -s /dev/zero in/zero
  : >in/empty
  run -66 timeout 60 "$mova" convert in gone.srt --recursive --to SubRip --output-dir out
  [ "${lines[3]}" = "mova: in/dangling: can't be opened: No such file or directory" ]
  [ "${lines[4]}" = "mova: in/empty: the file is empty" ]
  [ "${lines[5]}" = "mova: in/pipe: is a device or a pipe; save its content to a file first" ]
  [ "${lines[6]}" = "mova: in/zero: is a device or a pipe; save its content to a file first" ]
  [ "${lines[7]}" = "mova: gone.srt: can't be opened: No such file or directory" ]
  [ "${lines[8]}" = "mova: 3 converted, 5 failed" ]
  holds_files out a.srt b.srt c.srt
}

@test "a pipe, a folder and a protected file in the place of outputs" {
  three_files
  mkdir -p out/b.srt
  mkfifo out/a.srt
  echo precious >out/c.srt
  chmod 444 out/c.srt
  run -73 unprivileged timeout 60 "$mova" convert in --recursive --to SubRip --output-dir out
  [ "${lines[0]}" = "mova: out/a.srt: can't be written: is not a file" ]
  [ "${lines[1]}" = "mova: out/b.srt: can't be written: is a directory" ]
  [ "${lines[2]}" = "mova: out/c.srt: can't be written: Permission denied" ]
  [ "${lines[3]}" = "mova: 0 converted, 3 failed" ]
  [ "$(cat out/c.srt)" = precious ]
}

@test "an output folder that can't be made" {
  three_files
  run -73 "$mova" convert in --recursive --to SubRip --output-dir in/a.srt
  [ "$output" = "mova: in/a.srt: can't be made: Not a directory" ]
  run -73 "$mova" convert in --recursive --to SubRip --output-dir in/a.srt/out
  [ "$output" = "mova: in/a.srt/out: can't be made: Not a directory" ]
}

@test "files that grow, shrink and vanish while they are read" {
  mkdir in
  for i in {1..200}; do caption_file in/$i.srt; done
  long_caption_file long
  (while :; do
    cat long >>in/100.srt
    : >in/120.srt
    cat long >in/120.srt
    mv in/140.srt gone
    mv gone in/140.srt
  done) &
  changer=$!
  for turn in 1 2 3; do
    run "$mova" convert in --recursive --to SubRip --output-dir out$turn --report report$turn --jobs 4
    [[ " 0 2 66 " == *" $status "* ]]
    [ "$(wc -l <report$turn)" -ge 199 ]
    [ "$(find out$turn -name '.*' ! -name out$turn | wc -l)" = 0 ]
    same_bytes out$turn/99.srt expected_subrip
  done
  kill $changer
}

@test "a full disk in the middle: each file that doesn't fit is told, the others are there" {
  three_files
  long_caption_file in/b.srt
  mkdir out
  fills_up() {
    eval "$1"
    "$mova" convert in --recursive --to SubRip --output-dir out --report report --jobs 1 && status=0 || status=$?
    for name in a c; do same_bytes out/$name.srt expected_subrip; done
    holds_files out a.srt c.srt
    return $status
  }
  export -f fills_up same_bytes expected_subrip holds_files
  export mova
  namespace=()
  ((EUID == 0)) || namespace=(unshare -rm)
  if "${namespace[@]}" mount -t tmpfs tmpfs out 2>/dev/null; then
    if ((EUID == 0)); then umount out; fi
    run -73 "${namespace[@]}" bash -c 'fills_up "mount -t tmpfs -o size=32k tmpfs out"; status=$?; umount out; exit $status'
    reason="No space left on device"
  else # A container that lets nobody mount: the write fails for another reason, in the middle too.
    run -73 bash -c 'fills_up "ulimit -f 20"'
    reason="File too large"
  fi
  [ "${lines[1]}" = "mova: out/b.srt: can't be written: $reason" ]
  [ "${lines[3]}" = "mova: 2 converted, 1 failed" ]
  grep -F '"input":"in/b.srt","format":"SubRip","captions":1000,"target":"SubRip","output":null,"status":73' report
}

@test "a disk that is full from the start costs each file" {
  three_files
  run -73 bash -c 'ulimit -f 0; "$1" convert in --recursive --to SubRip --output-dir out --quiet --files-from /dev/null' - "$mova"
  [[ "$output" == *": File too large" ]]
}

@test "a worker that needs more memory than --memory costs only its file" {
  caption_file small.srt
  long_caption_file part.srt
  for i in {1..40}; do cat part.srt; done >large.srt
  run -70 "$mova" convert large.srt small.srt --to WebVTT --output-dir out --memory 8M --timeout 5 --report report
  [[ "$output" == *"mova: large.srt: "* ]]
  [[ "$output" == *"mova: 1 converted, 1 failed" ]]
  [[ "$(head -n 1 report)" == '{"input":"large.srt",'*'"output":null,"status":70,'* ]]
  holds_files out small.vtt
}

# --- Interruptions.

@test "an interrupted run leaves no half-written file, says how far it came, and goes on with --resume" {
  files_for_seconds
  "$mova" convert long.srt --to WebVTT --quiet
  all_are_whole() {
    local sums=$(find out -type f -exec sha1sum {} + | cut -d ' ' -f 1 | sort -u)
    [ "$sums" = "$(sha1sum <long.vtt | cut -d ' ' -f 1)" ]
  }
  for signal in INT TERM HUP INT INT; do
    rm -rf out
    # Bash lets what it starts in the background ignore SIGINT.
    env --default-signal=INT "$mova" convert in --recursive --to WebVTT --output-dir out --report report --quiet \
      --jobs 4 2>messages &
    pid=$!
    until [ "$(find out -name '*.vtt' 2>/dev/null | wc -l)" -gt $((RANDOM % 100)) ]; do :; done
    kill -$signal $pid
    wait $pid && status=0 || status=$?
    [ "$status" = $((128 + $(kill -l $signal))) ]
    [[ "$(cat messages)" == "mova: interrupted after "*" of $count files; the same command with --resume goes on" ]]
    [ "$(find out -name '.*' | wc -l)" = 0 ]
    all_are_whole
    done=$(find out -name '*.vtt' | wc -l)
    told=$(grep -c '"status":0' report)
    ((told <= done && told >= done - 4))
  done
  run -0 "$mova" convert in --recursive --to WebVTT --output-dir out --resume
  [ "${lines[count]}" = "mova: $((count - done)) converted, $done skipped" ]
  [ "$(find out -name '*.vtt' | wc -l)" = $count ]
  all_are_whole
}

@test "an interruption reaches the whole group of processes, as from a terminal" {
  many_files 300
  for moment in 0.02 0.05 0.1 0.3; do
    rm -rf out
    setsid env --default-signal=INT "$mova" convert in --recursive --to WebVTT --output-dir out --quiet 2>messages &
    pid=$!
    sleep $moment
    kill -INT -- -$pid || [ -s messages ] || true
    wait $pid && status=0 || status=$?
    [ "$status" = 130 ] || [ "$status" = 0 ]
    [ ! -s messages ] || [[ "$(cat messages)" == "mova: interrupted after "* ]]
    [ ! -e out ] || [ "$(find out -name '.*' | wc -l)" = 0 ]
  done
}

@test "results that nobody reads hold up neither conversions nor an interruption" {
  many_files 700
  mkfifo results
  exec 5<>results  # It can be opened for writing, and nobody reads.
  env --default-signal=INT "$mova" convert in --recursive --to WebVTT --output-dir out --json --report report \
    >results 2>messages 5<&- &
  pid=$!
  # Some 64 KB fit into a pipe.
  until [ "$(find out -name '*.vtt' 2>/dev/null | wc -l)" = 700 ]; do sleep 0.1; done
  sleep 0.5  # so that the last worker has told of its file
  kill -INT $pid
  wait $pid && status=0 || status=$?
  exec 5<&-
  [ "$status" = 130 ]
  [[ "$(cat messages)" == "mova: interrupted after "*" of 700 files; the same command with --resume goes on" ]]
  [ "$(grep -c '"status":0' report)" = 700 ]
}

@test "results that are read late come whole and in order" {
  many_files 700
  "$mova" convert in --recursive --to WebVTT --output-dir out --json | (sleep 1; cat) >results
  [ "$(grep -c '"status":0' results)" = 700 ]
  grep -o '"input":"[^"]*"' results | LC_ALL=C sort -c
}

@test "a signal that is ignored stays so" {
  files_for_seconds
  (
    trap '' HUP
    exec "$mova" convert in --recursive --to WebVTT --output-dir out --quiet
  ) &
  pid=$!
  until [ -e out ]; do :; done
  kill -HUP $pid
  wait $pid
  [ "$(find out -name '*.vtt' | wc -l)" = $count ]
}

# --- Progress.

# Runs a command on a terminal of its own, 100 columns wide.
on_terminal() {
  script -qec "stty cols 100; $*" /dev/null
}

@test "a bar on a terminal, gone at the end; only failures are listed" {
  files_for_seconds
  echo junk >in/0.srt
  TERM=xterm run -2 on_terminal "$mova" convert in --recursive --to WebVTT --output-dir out --jobs 1
  [[ "$output" == *"mova: in/0.srt: not in any format"* ]]
  [[ "$output" =~ \[[#.]+\]\ [0-9]+\ of\ $((count + 1))\ \ 1\ failed\ \ [0-9.]+/s\ \ 0:[0-9]{2}\ left ]]
  [[ "$output" == *$'\r\e[K'"mova: $count converted, 1 failed"* ]]
  [[ "$output" != *"in/1000.srt"* ]]
}

@test "no bar on a dumb terminal, with --quiet, or elsewhere" {
  three_files
  TERM=dumb run -0 on_terminal "$mova" convert in --recursive --to WebVTT --output-dir out
  [[ "$output" == "in/a.srt: SubRip"* ]]
  TERM=xterm run -0 on_terminal "$mova" convert in --recursive --to WebVTT --output-dir out --quiet
  [ "$output" = "" ]
  run -0 "$mova" convert in --recursive --to WebVTT --output-dir out
  [[ "$output" != *$'\e'* ]]
}

@test "--progress plain writes lines and lists failures only" {
  three_files
  echo junk >in/b.srt
  TERM=xterm run -2 "$mova" convert in --recursive --to WebVTT --output-dir out --progress plain
  [[ "${lines[0]}" == "mova: in/b.srt: not in any format"* ]]
  [ "${lines[1]}" = "mova: 2 converted, 1 failed" ]
}

# --- Very many.

in_memory=
teardown() {
  [ -z "$in_memory" ] || rm -rf "$in_memory"
}

@test "a list of a million names takes no more memory than a short one" {
  count=1000000
  # Its peak is some 10 MB; the names alone are 70 MB. The sanitizers need much address space for themselves.
  limit=60000
  if [[ $build == *asan* ]]; then
    count=100000
    limit=unlimited
  fi
  awk -v count=$count 'BEGIN {
    for (i = 0; i < count; ++i) printf "/a/folder/with/a/rather/long/name/of/an/archive/film-%07d.srt\n", i
    print "/elsewhere/film-0012345.srt"
  }' >list
  run -64 bash -c 'ulimit -v '$limit'; "$1" convert --files-from list --to SubRip --output-dir out' - "$mova"
  [ "$output" = "mova: /a/folder/with/a/rather/long/name/of/an/archive/film-0012345.srt and /elsewhere/film-0012345.srt would both be written to out/film-0012345.srt; convert them into different folders" ]
}

@test "very many inputs, every tenth of them junk" {
  count=100000
  # With sanitizers each process takes many times as long.
  [[ "$build" != *asan* ]] || count=2000
  # Some disks take minutes to let go of so many files, which take up 800 MB at most.
  if [ -w /dev/shm ] && (($(df --output=avail -k /dev/shm | tail -n 1) > 1500000)); then
    in_memory=$(mktemp -d /dev/shm/mova-test-XXXXXX)
    cd "$in_memory"
  fi
  mkdir caps junk
  awk -v count=$count 'BEGIN {
    for (i = 0; i < count; ++i) {
      name = sprintf("%s/%06d.srt", i % 10 == 3 ? "junk" : "caps", i)
      print name
      if (i % 10 == 3) print "just a note" >name
      else print "1\n00:00:01,000 --> 00:00:02,000\nHello.\n" >name
      close(name)
    }
  }' >list
  run -2 timeout 300 "$mova" convert --files-from list --to SubRip --output-dir out --report report --progress plain
  [ "${lines[-1]}" = "mova: $((count * 9 / 10)) converted, $((count / 10)) failed" ]
  [ "$(wc -l <report)" = $count ]
  [ "$(grep -c '^{"input":"caps/.*"status":0,' report)" = $((count * 9 / 10)) ]
  [ "$(grep -c '^{"input":"junk/.*"status":2,' report)" = $((count / 10)) ]
  # In the order of the list.
  cmp list <(sed 's/^{"input":"\([^"]*\)".*/\1/' report)
}
