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
