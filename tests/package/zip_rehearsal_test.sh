#!/usr/bin/env bash
# Packs the Windows build as the release zip (in a Ninja tree cpack only
# installs what was built), unpacks it and rehearses both sample servers
# under Wine from the unpacked files alone: rehearse.cmd puts the package's
# lab first on the path, and nothing of the build tree is on Wine's path.
#   zip_rehearsal_test.sh SOURCE_DIR WINDOWS_BUILD_DIR
set -euo pipefail
root=$(realpath "$1")
windows=$(realpath "$2")
. "$root/tests/fleet/expect.sh"
scratch=$(mktemp -d)
export WINEDEBUG=-all

(cd "$windows" && cpack -G ZIP -B "$scratch/package" > "$scratch/cpack.out")
zip=$(ls "$scratch"/package/sasfwctl-*-win64.zip)
unzip -q "$zip" -d "$scratch/unpacked"
top=$scratch/unpacked/$(basename "$zip" .zip)

expected=(./docs/operator-guide.md ./lab/{README.md,arcconf.exe,labctl.exe,storcli64.exe}
  ./lab/scenarios/{arcconf-server,storcli-faults,storcli-hba-raid}.scenario ./rehearse.cmd
  ./samples/{arcconf,storcli}-{profile.txt,server.scenario} ./sasfwctl.exe)
diff -u <(printf '%s\n' "${expected[@]}" | LC_ALL=C sort) \
  <(cd "$top" && find . -type f | LC_ALL=C sort) || fail "the zip holds other files than these"

# rehearse FAMILY: runs rehearse.cmd into $scratch/FAMILY.out and checks how
# it ends; removes the working folder that it left under Wine's %TEMP%.
rehearse() {
  (cd "$top" && wine cmd /c rehearse.cmd "$1") 2>&1 | tr -d '\r' > "$scratch/$1.out"
  expect_rehearsal "$scratch/$1.out"
  local log
  log=$(sed -n 's|^log: \(.*\)$|\1|p' "$scratch/$1.out")
  if [ -z "$log" ] || ! log=$(winepath -u "$log") || [ ! -s "$log" ]; then
    fail "$1: no log at '$log'"; return
  fi
  rm -rf "$(dirname "$log")"
}

rehearse storcli
expect_text "$scratch/storcli.out.before" \
  "All expander(s) firmware download success." \
  "storcli/c0/e2  ABC36X  1.2.3 1.2.4 (abc36x_fw.rom) 0.9  1.0 (abc36x_psoc.rom)" \
  "storcli/c1/e62 ABC12X  1.0.0 1.1.0 (abc12x_fw.rom) 0.8  1.0 (abc12x_psoc.rom)"

rehearse arcconf
expect_text "$scratch/arcconf.out.before" \
  " PSOC image download success." \
  "arcconf/1/2/0 X100    1.02 (report 1.00) 1.04 (x100_fw.bin) 0.9  1.0 (x100_psoc.bin)"

finish
rm -rf "$scratch"
