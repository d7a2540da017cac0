load helper

@test "without arguments, the command says what is missing" {
  run -64 "$mova"
  [ "$output" = "mova: A subcommand is required (mova --help tells how)" ]
}

@test "an unknown command is named" {
  run -64 "$mova" transmogrify
  [ "$output" = 'mova: there is no command "transmogrify"; the commands are convert, detect, formats (mova --help tells how)' ]
}

@test "an unknown option is named" {
  run -64 "$mova" convert film.srt --to SubRip --frobnicate
  [ "$output" = "mova: The following argument was not expected: --frobnicate (mova convert --help tells how)" ]
}

@test "a missing input" {
  run -64 "$mova" convert --to SubRip
  [ "$output" = "mova: INPUT is required (mova convert --help tells how)" ]
  run -64 "$mova" detect
  [ "$output" = "mova: INPUT is required (mova detect --help tells how)" ]
}

@test "every help has examples and ends well" {
  for command in "" convert detect formats; do
    run --separate-stderr -0 "$mova" $command --help
    [[ "$output" == *"Examples:"* ]]
    [ "$stderr" = "" ]
  done
}

@test "the help of convert lists the settings with their defaults" {
  run -0 "$mova" convert --help
  [[ "$output" == *"FrameRate            frames per second of the material, above 0; default 29.97"* ]]
  [[ "$output" == *"SsaFontColor         Sub Station Alpha: primary colour; default 0xFFFFFFFF"* ]]
  [[ "$output" == *"FcpFontName          Final Cut Pro Xml: font of a title; default Lucida Grande"* ]]
}

@test "no line of a help is longer than 120 columns" {
  for command in "" convert detect formats; do
    run -0 "$mova" $command --help
    awk 'length > 120 { print; bad = 1 } END { exit bad }' <<<"$output"
  done
}

@test "--version" {
  run -0 "$mova" --version
  [[ "$output" =~ ^mova\ [0-9]+\.[0-9]+\.[0-9]+$ ]]
}

@test "formats lists names, extensions and use" {
  run -0 "$mova" formats
  [ "${lines[0]}" = "NAME                  EXTENSION  USE" ]
  [[ "$output" == *$'\nSubRip                .srt       read, write'* ]]
}

@test "formats --json is an array of objects" {
  run -0 "$mova" formats --json
  [ "${lines[0]}" = "[" ]
  [[ "$(tr -d ' \n' <<<"$output")" == *'{"name":"SubRip","extension":".srt","read":true,"write":true}'* ]]
}

@test "a full standard output is told" {
  for arguments in "formats" "formats --json" "--help" "detect film.srt" "detect film.srt film.srt film.srt" \
    "convert film.srt --to WebVTT --output-dir out --json"; do
    caption_file film.srt
    run -73 bash -c '"$1" $2 >/dev/full' - "$mova" "$arguments"
    [ "$output" = "mova: standard output can't be written: No space left on device" ]
  done
}

@test "a full or closed standard error changes nothing else" {
  caption_file film.txt
  for where in '2>/dev/full' '2>&-'; do
    run -0 bash -c '"$1" convert film.txt --to SubRip '"$where" - "$mova"
    same_bytes film.srt expected_subrip
    run -66 bash -c '"$1" convert gone.srt --to SubRip '"$where" - "$mova"
    run -64 bash -c '"$1" frobnicate '"$where" - "$mova"
  done
}

# --- Settings.

setting_is_refused() {
  caption_file film.txt
  run -64 "$mova" convert film.txt --to SubRip --set "$1"
  [ "$output" = "mova: --set$2" ]
  holds_only film.txt
}

@test "an unknown field is refused with the nearest names" {
  setting_is_refused FrameRat=25 \
    ': there is no field "FrameRat"; did you mean FrameRate? (mova convert --help lists the fields)'
  setting_is_refused font=x \
    ': there is no field "font"; did you mean SsaFontName, SsaFontSize, SsaFontColor, DCinemaFontFile? (mova convert --help lists the fields)'
  setting_is_refused =5 ': there is no field "" (mova convert --help lists the fields)'
  setting_is_refused Qwertyuiop=5 ': there is no field "Qwertyuiop" (mova convert --help lists the fields)'
}

@test "a setting without a value is refused" {
  setting_is_refused FrameRate ' FrameRate: write FIELD=VALUE, as in --set FrameRate=25'
}

@test "a value of the wrong type is refused" {
  setting_is_refused FrameRate=25,5 ' FrameRate: "25,5" is not a number such as 25 or 29.97'
  setting_is_refused FrameRate= ' FrameRate: "" is not a number such as 25 or 29.97'
  setting_is_refused DropFrame=yes ' DropFrame: "yes" is not true or false'
  setting_is_refused SsaOutline=2.5 ' SsaOutline: "2.5" is not a whole number from -2147483648 to 2147483647'
  setting_is_refused SsaFontColor=red \
    ' SsaFontColor: "red" is not a colour: 0xAARRGGBB or a number from 0 to 4294967295'
  setting_is_refused $'SsaFontName=\xff' $' SsaFontName: "\xff" is not text in UTF-8'
  setting_is_refused 'CodePage=[1252]' ' CodePage: "[1252]" is not a whole number from -2147483648 to 2147483647'
}

@test "a value out of range is refused" {
  setting_is_refused FrameRate=0 ' FrameRate: "0" is not a number of frames per second above 0'
  setting_is_refused FrameRate=-25 ' FrameRate: "-25" is not a number of frames per second above 0'
  setting_is_refused FrameRate=nan ' FrameRate: "nan" is not a number such as 25 or 29.97'
  setting_is_refused FrameRate=inf ' FrameRate: "inf" is not a number such as 25 or 29.97'
  setting_is_refused FrameRate=1e999 ' FrameRate: "1e999" is not a number such as 25 or 29.97'
  setting_is_refused FcpFontSize=2147483648 \
    ' FcpFontSize: "2147483648" is not a whole number from -2147483648 to 2147483647'
  setting_is_refused SsaFontColor=0x1FFFFFFFF \
    ' SsaFontColor: "0x1FFFFFFFF" is not a colour: 0xAARRGGBB or a number from 0 to 4294967295'
  setting_is_refused CodePage=1259 \
    ' CodePage: "1259" is not a known code page: 0 to detect, or 5, 437, 850, 852, 866, 874, 932, 936, 949 to 950, 1250 to 1258, 28591 to 28601, 28603 to 28605, 65001'
}

@test "settings reach the conversion" {
  printf 'first line is skipped\n1\n00:00:01,000 --> 00:00:02,000\n\xcf\xf0\xe8\xe2\xe5\xf2\n\n' >old.txt
  run -0 "$mova" convert old.txt --to SubRip --set CodePage=1251
  cmp old.srt <(printf '1\r\n00:00:01:000 --> 00:00:02:000\r\nПривет\r\n\r\n')
}

@test "settings may be repeated, in either form" {
  caption_file film.txt
  run -0 "$mova" convert film.txt --set FrameRate=25 --to SubRip --set=CodePage=0 --set DropFrame=true
  same_bytes film.srt expected_subrip
}

# --- detect.

@test "detect tells format and number of captions" {
  caption_file film.srt
  caption_file other.bin
  run --separate-stderr -0 "$mova" detect film.srt other.bin
  [ "$output" = "film.srt: SubRip, 2 captions
other.bin: SubRip, 2 captions" ]
  [ "$stderr" = "" ]
  holds_only film.srt other.bin
}

@test "detect goes on after a file that it can't tell, and ends with the highest status" {
  caption_file film.srt
  echo "just a note" >note.txt
  run --separate-stderr -66 "$mova" detect gone.srt note.txt film.srt
  [ "$output" = "film.srt: SubRip, 2 captions" ]
  [ "${stderr_lines[0]}" = "mova: gone.srt: can't be opened: No such file or directory" ]
  [[ "${stderr_lines[1]}" == "mova: note.txt: not in any format"* ]]
  run -2 "$mova" detect film.srt note.txt
}

@test "detect --json prints one object a line" {
  caption_file film.srt
  : >empty
  run --separate-stderr -2 "$mova" detect --json film.srt empty
  [ "${lines[0]}" = '{"input":"film.srt","format":"SubRip","captions":2,"status":0,"message":null}' ]
  [ "${lines[1]}" = '{"input":"empty","format":null,"captions":0,"status":2,"message":"empty: the file is empty"}' ]
}
