#!/usr/bin/env bash
# Prints docs/formats.md: formats-page.sh MOVA. What it says of each format is in formats.txt; what a format brings back
# is tried here, and the samples are made here, all with the command.
set -eu
export LC_ALL=C
here=$(cd "$(dirname "$0")" && pwd)
mova=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

list() { "$mova" formats | tail -n +2; }
names() { list | cut -c 1-22 | sed 's/ *$//'; }
described() { sed -n 's/^= //p' "$here/formats.txt"; }
diff <(names) <(described) >&2 || { echo "formats.txt describes other formats than there are" >&2; exit 1; }
description() { awk -v name="$1" '/^= / { inside = $0 == "= " name; next } inside' "$here/formats.txt" | sed '${/^$/d}'; }

# write FORMAT SOURCE [OPTION...]: prints the path of what the file becomes.
write() {
  local format=$1 source=$2
  shift 2
  rm -rf out && mkdir out
  "$mova" convert "$source" --to "$format" --output out/ --quiet "$@" 2>/dev/null
  echo out/*
}

# --- What comes back

mark=$'\xEF\xBB\xBF'

# and_back FORMAT SOURCE [OPTION...]: the file as SubRip once it has been written in the format and read again. A mark
# goes in front of what was written, or else its first line would not be read.
and_back() {
  local written extension
  written=$(write "$@")
  extension=${written##*.}
  { printf '%s' "$mark"; cat "$written"; } >"marked.$extension"
  shift 2
  "$mova" convert "marked.$extension" --to SubRip --output back.srt --quiet "$@" 2>/dev/null || : >back.srt
  tr -d '\r' <back.srt
}

# captions TEXT START...: captions of a text at these parts of the first, second... second. There have to be some, as a
# file is only recognised if it has more captions than lines that are none.
captions() {
  local text=$1 second=0 part
  shift
  printf '%s' "$mark"
  for part; do
    second=$((second + 1))
    printf '%d\n00:00:0%d,%d --> 00:00:0%d,960\n%b\n\n' $second $second "$part" $second "${text//\\an/\\\\an}"
  done
}

texts() { grep -v -e '-->' -e '^[0-9]*$'; }

# keeps FORMAT TEXT: whether the text comes back as it was. (Captions at equal parts of a second are joined by some.)
keeps() {
  captions "$2" 120 160 200 240 280 320 360 400 440 >probe.srt
  diff -q <(tail -c +4 probe.srt | texts) <(and_back "$1" probe.srt | texts) >/dev/null
}

# How exactly times are told: milliseconds, hundredths, seconds, or frames; "-" for what can't be written and read.
precision() {
  captions words 107 340 120 160 200 240 280 320 360 >times.srt
  local times
  times=$(and_back "$1" times.srt --set FrameRate=25 | sed -n 's/^00:00:..:\(...\) -->.*/\1/p' | head -n 2 | tr '\n' ' ')
  case $times in
    "106 "* | "107 "*) echo milliseconds ;;
    "1"?"0 340 ") echo hundredths ;;
    "000 000 ") echo seconds ;;
    "") case $1 in
      CapMaker* | Cheetah* | EBU*) echo frames ;;
      *) echo "$1 can't be read again" >&2; exit 1 ;;
    esac ;;
    *) echo frames ;;
  esac
}

# is_tag FORMAT TAG: whether what was written last holds the tag as it stands. (Captions of CEA-608 do so in code words,
# for all tags but one.)
is_tag() {
  case $1 in
    DVD_SCC*) [[ $2 != '<i>' ]] ;;
    *) grep -q -F -e "$2" out/* ;;
  esac
}

# tag FORMAT TAG TEXT: how a tag comes back.
tag() {
  if ! keeps "$1" "$3"; then
    echo –
  elif is_tag "$1" "$2"; then
    echo tag
  else
    echo yes
  fi
}

position() {
  local position kept=0
  for position in 1 3 4 5 6 8 9 7; do
    if keeps "$1" "{\\an$position}words"; then kept=$((kept + 1)); fi
  done
  case $kept in
    0) echo – ;;
    8) if is_tag "$1" an7}; then echo tag; else echo yes; fi ;;
    *) echo some ;;
  esac
}

anchor() { tr 'A-Z ' 'a-z-' <<<"$1" | tr -d './'; }

overview() {
  local line name extension use
  echo '| Name | Extension | Use | Times | Italics | Bold | Underline | Colour | Positions | Line breaks |'
  echo '|---|---|---|---|---|---|---|---|---|---|'
  list | while IFS= read -r line; do
    name=$(sed 's/ *$//' <<<"${line:0:22}")
    extension=$(sed 's/ *$//' <<<"${line:22:11}")
    use=${line:33}
    printf '| [%s](#%s) | %s | %s | %s |' "$name" "$(anchor "$name")" "$extension" "$use" "$(precision "$name")"
    if [[ $use == *write* ]]; then
      printf ' %s |' "$(tag "$name" '<i>' '<i>words</i>')" "$(tag "$name" '<b>' '<b>words</b>')" \
        "$(tag "$name" '<u>' '<u>words</u>')" "$(tag "$name" '<font ' '<font color="#ff0000">words</font>')" \
        "$(position "$name")" "$(if keeps "$name" 'words\nwords'; then echo yes; else echo –; fi)"
      echo
    else
      echo ' | | | | | |'
    fi
  done
}

# --- Samples

dump() { od -A x -t x1z -v | sed 's/ *$//'; }

# A file with one caption, from 1 to 3 seconds.
cheetah_file() {
  head -c 128 /dev/zero | { printf '\xEA\x22\x03'; tail -c +4; }
  printf '\x33\0\0\0\1\0\0\0\3\0\0\0\0\0\0\0\0\0\0\xD0The last ferry leaves at nine.\0'
  head -c 21 /dev/zero
}

# A file with the mark of a caption.
capmaker_file() {
  printf '+%127s\x0B0:00:01:00' '' | tr ' ' '\0'
  head -c 14 /dev/zero
  printf 'The last ferry leaves at nine.'
  head -c 471 /dev/zero
}

# Everything that differs from day to day or from file to file is made the same. (Midnight may have passed since.)
steady() {
  local day days=()
  for day in now '1 hour ago'; do
    days+=(-e "s/$(date -d "$day" +%Y-%m-%d)T[0-9:]{8}/2024-05-31T12:00:00/g"
      -e "s|$(date -d "$day" +%d/%m/%Y)|31/05/2024|g" -e "s/$(date -d "$day" +%d.%m.%Y)/31.05.2024/g"
      -e "s/($(date -d "$day" +%y%m%d)){2}/240531240531/")
  done
  sed -E "${days[@]}" \
    -e 's/[0-9A-Fa-f]{8}(-[0-9A-Fa-f]{4}){3}-[0-9A-Fa-f]{12}/01234567-89ab-cdef-0123-456789abcdef/g' \
    -e 's/"[0-9a-f]{24}"/"0123456789abcdef01234567"/g'
}

# Of a long file the beginning, and what is around the first caption.
shortened() {
  awk '
    { line[NR] = $0; if (!first && /ferry/) first = NR }
    END {
      for (i = 1; i <= NR; ++i) {
        if (NR <= 60 || i <= 8 || (i >= first - 8 && i <= first + 20)) { print line[i]; left = 0 }
        else if (!left++) print "…"
      }
    }'
}

sample() {
  case $1 in
    "Cheetah Caption") cheetah_file | dump | sed -n '1p;9,$p' ;;
    "CapMaker Plus") capmaker_file | dump | sed -n '1p;9,14p' ;;
    "EBU STL") steady <"$(write "$1" "$here/formats.srt")" | dump | sed -n '1,3p;14,18p' ;;
    *) # (Without the control characters that a few formats hold.)
      steady <"$(write "$1" "$here/formats.srt")" | tr -d '\r' | sed -e 's/\xC2[\x80-\x9F]//g' -e '$a\' | shortened ;;
  esac
}

# --- The page

cat <<END
# Formats

This page is made by [tests/docs/formats-page.sh](../tests/docs/formats-page.sh), and so are its tables and samples.

An input goes to the first format of this list that recognises it; a target is named as in the list, case and blanks
ignored. Text is read with a UTF-8 or UTF-16 mark in front or without; without a mark the first line is passed over.

**Times** tells how exactly a format tells times. Those that count **frames** do so at the setting
[\`FrameRate\`](settings.md), unless the file states a rate of its own.

The columns behind it tell what **comes back** when a caption that is wholly in italics, bold, underlined or red, that
stands at one of nine positions, or that has two lines, is written in the format and read again. "Yes" is what comes back
by the format's own means; "tag" is what comes back because tags such as \`<i>\` and \`{\\an8}\` are written as they stand,
which players may or may not know; "some" are a few of the nine positions.

$(overview)

The samples are made from this file. Long ones are cut; line ends are shown as one, and what differs from run to run,
such as dates and identifiers, as one and the same.

\`\`\`
$(cat "$here/formats.srt")
\`\`\`
END
names | while IFS= read -r name; do
  printf '\n## %s\n\n%s\n\n```\n' "$name" "$(description "$name")"
  sample "$name"
  echo '```'
done
