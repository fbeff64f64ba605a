#!/usr/bin/env bash
# Runs the README's rehearsal command for both sample servers and for an
# operator's own server, profile and images, against the current build, and
# checks what an operator would read: exit codes, the images staged by the
# update, and every expander up to date after the power cycle.
#   rehearsal_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
root=$(realpath "$1")
build=$(realpath "$2")
. "$root/tests/fleet/expect.sh"
scratch=$(mktemp -d)
# The rehearsal takes its build folder relative to the source tree.
export BUILD_DIR=$(realpath --relative-to="$root" "$build")

# rehearse NAME [WORD...]: runs the rehearsal into $scratch/NAME.out, checks
# how it ends and sets workdir to the working directory it left.
rehearse() {
  local name=$1; shift
  "$root/scripts/rehearse" "$@" > "$scratch/$name.out" 2>&1 ||
    fail "rehearse $* ended with status $?"
  expect_rehearsal "$scratch/$name.out"
  workdir=$(sed -n 's|^log: *\(.*\)/log\.txt$|\1|p' "$scratch/$name.out")
  [ -f "$workdir/log.txt" ] || fail "$name: no log.txt in '$workdir'"
}

rehearse storcli
expect_text "$scratch/storcli.out.before" \
  "3 Expander(s) Found." \
  "All expander(s) firmware download success." \
  "storcli/c0/e2  ABC36X  1.2.3 1.2.4 (abc36x_fw.rom) 0.9  1.0 (abc36x_psoc.rom)" \
  "storcli/c1/e62 ABC12X  1.0.0 1.1.0 (abc12x_fw.rom) 0.8  1.0 (abc12x_psoc.rom)" \
  "storcli64.exe /c1/e62 download src=abc12x_psoc.rom forceActivate mode=5 bufferid=2"
for file in ctrlcount.rst show_0_log show_eall_0_log show_1_log show_eall_1_log; do
  [ -f "$workdir/$file" ] || fail "storcli: tool output $file missing"
done
rm -rf "$workdir"

rehearse arcconf arcconf
expect_text "$scratch/arcconf.out.before" \
  "--psoc 1 -s 1" \
  " Power cycle system is required to activate downloaded FW." \
  "arcconf/1/2/0 X100    1.02 (report 1.00) 1.04 (x100_fw.bin) 0.9  1.0 (x100_psoc.bin)"
expect_text "$scratch/arcconf.out.after" "arcconf/1/2/0 X100    1.04 "
rm -rf "$workdir"

# An operator's own server: its scenario, profile, images and a switch.
mkdir "$scratch/images"
cat > "$scratch/own.scenario" <<'SCENARIO'
storcli-controller product="Tarvex 9500-8i HBA" subvendor=0x1F3A subdevice=0x4111 driver=tvsas3
enclosure eid=5 product=QRS48X version=3.0.9 psoc=2.0 slots=48 pd=40
image file=qrs48x_fw.rom   version=3.0.10
image file=qrs48x_psoc.rom version=2.1 kind=psoc
SCENARIO
echo "QRS48X,aux,3.0.10,qrs48x_fw.rom,aux,qrs48x_psoc.rom,E,2,0" > "$scratch/own-profile.txt"
echo main > "$scratch/images/qrs48x_fw.rom"
echo psoc > "$scratch/images/qrs48x_psoc.rom"
rehearse own --scenario "$scratch/own.scenario" --profile "$scratch/own-profile.txt" \
  --images "$scratch/images" -l run.log
expect_text "$scratch/own.out.before" \
  "Installed Version:3.0.9" \
  "storcli/c0/e5 QRS48X  3.0.9 3.0.10 (qrs48x_fw.rom) 2.0  2.1 (qrs48x_psoc.rom)"
[ -s "$workdir/run.log" ] || fail "own: -l run.log did not reach the utility"
rm -rf "$workdir"

finish
rm -rf "$scratch"
