# For the tests of the command: each runs in an empty folder of its own, which is taken away afterwards.
# MOVA_BUILD names the build that is tested; without it the release build is.

bats_require_minimum_version 1.5.0

repository=$(cd "$BATS_TEST_DIRNAME/../.." && pwd)
build=${MOVA_BUILD:-$repository/build/release}
mova=$build/bin/mova

# Statuses that the command doesn't know, so that a find of a sanitizer is never taken for one of its own.
export ASAN_OPTIONS=exitcode=99 UBSAN_OPTIONS=exitcode=99:print_stacktrace=1 LSAN_OPTIONS=exitcode=98

setup() {
  mkdir "$BATS_TEST_TMPDIR/work"
  cd "$BATS_TEST_TMPDIR/work"
}

# A SubRip file of two captions, and what it becomes as SubRip.
caption_file() {
  printf '\xef\xbb\xbf1\r\n00:00:01,000 --> 00:00:02,500\r\nWho is there?\r\n\r\n' >"$1"
  printf '2\r\n00:00:03,000 --> 00:00:04,000\r\n<i>Nobody</i>\r\nat all.\r\n\r\n' >>"$1"
}

expected_subrip() {
  printf '1\r\n00:00:01:000 --> 00:00:02:500\r\nWho is there?\r\n\r\n'
  printf '2\r\n00:00:03:000 --> 00:00:04:000\r\n<i>Nobody</i>\r\nat all.\r\n\r\n'
}

# A SubRip file of many captions, some 60 kB.
long_caption_file() {
  printf '\xef\xbb\xbf' >"$1"
  local i
  for ((i = 1; i <= 1000; ++i)); do
    printf '%d\r\n00:%02d:%02d,000 --> 00:%02d:%02d,900\r\nLine %d.\r\n\r\n' \
      "$i" $((i / 60)) $((i % 60)) $((i / 60)) $((i % 60)) "$i"
  done >>"$1"
}

# Runs the command without root's power over files.
unprivileged() {
  if ((EUID == 0)); then
    setpriv --bounding-set=-all --inh-caps=-all "$@"
  else
    "$@"
  fi
}

# The folder holds these names and nothing else: no temporary file was left.
holds_only() {
  diff <(LC_ALL=C ls -A) <((($# == 0)) || printf '%s\n' "$@" | LC_ALL=C sort)
}

same_bytes() {
  cmp "$1" <("${@:2}")
}
