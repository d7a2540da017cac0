# The manual page and the completions, which are made from the command's own table of options.

load ../cli/helper

setup_file() {
  load ../cli/helper
  cmake --install "$build" --prefix "$BATS_FILE_TMPDIR/prefix" --component command >/dev/null
  # Nobody's settings reach the shells, and nothing reaches anybody's history.
  export HOME=$BATS_FILE_TMPDIR INPUTRC=/dev/null
  unset XDG_CONFIG_HOME XDG_DATA_HOME
}

share=$BATS_FILE_TMPDIR/prefix/share
commands="convert detect formats"

# options COMMAND: the long options that the help of a command lists.
options() { "$mova" "$1" --help | sed -n 's/^  \(-.,\)\?\(--[a-z-]*\) .*/\2/p'; }

# The manual page as it is read.
read_page() { mandoc -T ascii -O width=200 "$share/man/man1/mova.1" | sed 's/.\x08//g'; }

@test "the manual page is faultless roff" {
  run -0 groff -man -ww -T utf8 -z "$share/man/man1/mova.1"
  [ "$output" = "" ]
  run mandoc -T lint -W warning "$share/man/man1/mova.1"
  # It bears no date, so that it is the same whenever it is built.
  [ "$(grep -v 'missing date, using "": TH' <<<"$output")" = "" ]
  grep -Fx ".TH MOVA 1 \"\" \"$("$mova" --version)\" \"User Commands\"" "$share/man/man1/mova.1"
}

@test "the manual page has the sections of any other" {
  diff <(read_page | grep '^[A-Z][A-Z ]*$') - <<'END'
NAME
SYNOPSIS
DESCRIPTION
COMMANDS
FORMATS
EXIT STATUS
EXAMPLES
SEE ALSO
END
  [ "$(read_page | grep -A 1 '^NAME' | tail -n 1)" = "       mova - convert closed-caption and subtitle files" ]
}

@test "the manual page tells all that the helps tell" {
  read_page >page
  for command in $commands; do
    grep -E "^ +mova $command \[OPTION\]\.\.\." page
    sed -n "/^   mova $command\$/,/^   mova\|^[A-Z]/p" page >section
    [ "$(options "$command" | wc -l)" -ge 2 ]
    for option in $(options "$command"); do
      grep -E "^ +(-., )?$option( |$)" section
    done
  done
  grep -E '^ +--to FORMAT$' page
  grep -E '^ +--set FIELD=VALUE$' page
  # Every field, format and exit status, and every example.
  for field in $("$mova" convert --help | sed -n '/^Fields/,$s/^  \([A-Za-z]*\)  .*; default .*/\1/p'); do
    grep -E "^ +$field( |$)" page
  done
  "$mova" formats | sed '1d; s/^\(.\{22\}\)\(\S*\).*/\1(\2/; s/ *(/ (/' >formats
  [ "$(wc -l <formats)" -ge 40 ]
  tr -s ' \n' ' ' <page >joined
  while IFS= read -r format; do grep -F "$format" joined >/dev/null; done <formats
  for status in 0 1 2 64 66 70 73; do grep -E "EXIT STATUS.* $status .*EXAMPLES" joined >/dev/null; done
  for command in $commands; do
    "$mova" "$command" --help | sed -n '/^Examples:/,/^$/s/^  \(.*\)/\1/p' | sed 's/   .*//' >examples
    [ -s examples ]
    while IFS= read -r example; do grep -F "       $example" page; done <examples
  done
}

@test "every completion knows every option" {
  for file in bash-completion/completions/mova zsh/site-functions/_mova fish/vendor_completions.d/mova.fish; do
    for command in $commands; do
      for option in $(options "$command"); do
        grep -E -- "(--|-l )${option#--}([^a-z-]|$)" "$share/$file" >/dev/null
      done
    done
  done
}

# typed_in SHELL LINE...: types lines into an interactive shell, \t being the tabulator key, and prints the words that
# `mova` gets then.
typed_in() {
  local shell=$1 start
  shift
  case $shell in
    bash) start=". '$share/bash-completion/completions/mova'" ;;
    zsh) start="fpath=('$share/zsh/site-functions' \$fpath); autoload -U compinit; compinit -D -u" ;;
  esac
  touch film.srt
  mkdir -p folder
  : >words
  {
    echo "PS1=; $start; mova() { printf '<%s>' \"\$@\" >>words; echo >>words; }"
    printf '%b\n' "$@" exit
  } | case $shell in
    bash) TERM=xterm timeout 30 script -qec 'bash --norc --noprofile -i' /dev/null ;;
    zsh) TERM=xterm timeout 30 script -qec 'zsh -f -i' /dev/null ;;
  esac >/dev/null
  cat words
}

# What bash and zsh make of the same keys.
keys=(
  'mova conv\tfi\t --to webv\t'
  'mova convert film.srt --to "sub sta\t --set Frame\t25 --q\t'
  'mova convert film.srt --to sony\\ dvd\\ l\t'
  'mova convert film.srt --to=tt\\ 2006-04\\ .t\t --set=codep\t1252'
  'mova convert --to capm\t'
  'mova convert --progress pl\t --jobs fi\t --recu\t'
  'mova det\tfil\t --js\t'
  'mova form\t--j\t'
)
completed="<convert><film.srt><--to><WebVTT>
<convert><film.srt><--to><Sub Station Alpha><--set><FrameRate=25><--quiet>
<convert><film.srt><--to><Sony DVD line/dur>
<convert><film.srt><--to=TT 2006-04 .ttml><--set=CodePage=1252>
<convert><--to><capm>
<convert><--progress><plain><--jobs><fi><--recursive>
<detect><film.srt><--json>
<formats><--json>"

@test "keys in bash" {
  diff <(typed_in bash "${keys[@]}" 'mova convert --output fol\t' 'mova convert --output-dir fol\t') \
    <(echo "$completed"; echo '<convert><--output><folder/>'; echo '<convert><--output-dir><folder/>')
}

@test "keys in zsh" {
  diff <(typed_in zsh "${keys[@]}" 'mova convert --output fol\t' 'mova convert --output-dir fol\t') \
    <(echo "$completed"; echo '<convert><--output><folder>'; echo '<convert><--output-dir><folder>')
}

# fish LINE: what fish offers for a line.
fish_offers() { fish --no-config -c "source '$share/fish/vendor_completions.d/mova.fish'; complete -C '$1'"; }

@test "what fish offers" {
  touch film.srt
  mkdir folder
  diff <(fish_offers 'mova ') <("$mova" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) *\(.*\)/\1\t\2/p')
  diff <(fish_offers 'mova convert film.srt --to sony') - <<END
Sony DVD Exp dur	.sub
Sony DVD line/dur	.txt
Sony DVD Tabs	.sub
Sony DVDArchitect	.sub
END
  [ "$(fish_offers 'mova convert --to=Web')" = "--to=WebVTT	.vtt" ]
  [ "$(fish_offers 'mova convert --to capm')" = "" ]
  [ "$(fish_offers 'mova convert --set Frame')" = "FrameRate=	frames per second of the material, above 0" ]
  [ "$(fish_offers 'mova convert f')" = "film.srt
folder/" ]
  [ "$(fish_offers 'mova convert --output f')" = "film.srt
folder/" ]
  [[ "$(fish_offers 'mova convert --output-dir f')" == folder/* ]]
  [[ "$(fish_offers 'mova convert --progress ')" == plain* ]]
  [ "$(fish_offers 'mova convert --jobs f')" = "" ]
  [ "$(fish_offers 'mova detect fi')" = "film.srt" ]
  [ "$(fish_offers 'mova formats f')" = "" ]
  [ "$(fish_offers 'mova formats --j')" = "--json	Print a JSON array" ]
}
