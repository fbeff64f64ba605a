# Checks shared by the operator-level tests; sourced, not run.
# Each failed check says what was missing and where, and the test goes on
# so that one run shows every fault; `finish` gives the verdict.
failures=0

fail() { echo "FAIL: $*" >&2; failures=$((failures + 1)); }

# expect_text FILE TEXT...: each TEXT stands in FILE, as a fixed string.
expect_text() {
  local file=$1; shift
  for text in "$@"; do
    grep -qF -- "$text" "$file" || fail "'$text' not in $file"
  done
}

# expect_count N FILE TEXT: TEXT stands in N lines of FILE.
expect_count() {
  local count
  count=$(grep -cF -- "$3" "$2" || true)
  [ "$count" -eq "$1" ] || fail "'$3' in $count lines of $2, not $1"
}

finish() {
  [ "$failures" -eq 0 ] || { echo "$failures check(s) failed" >&2; exit 1; }
  echo "all checks passed"
}

# expect_rehearsal OUT: a rehearsal's output, from scripts/rehearse or the
# package's rehearse.cmd. Both runs end in 0 and the one after the power
# cycle writes nothing and finds every expander up to date. Leaves what
# came before the power cycle in OUT.before and the rest in OUT.after.
expect_rehearsal() {
  sed '/^== power cycle/q' "$1" > "$1.before"
  sed -n '/^== power cycle/,$p' "$1" > "$1.after"
  expect_count 2 "$1" "== exit code 0"
  expect_text "$1.after" "Power cycle done:" "All expanders' firmware are up-to-date."
  if grep -qF "download success" "$1.after"; then fail "$1: written again after the power cycle"; fi
}
