#!/usr/bin/env bash
# Runs the README's rehearsal command, with the programs of the build under
# test and no build of its own, for both sample servers and an operator's own
# server, profile and images; checks what an operator reads: exit codes, the
# images staged, every expander up to date after the power cycle.
#   rehearsal_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
root=$(realpath "$1")
. "$root/tests/fleet/expect.sh"
scratch=$(mktemp -d)
BUILD_DIR=$(realpath "$2")
export BUILD_DIR REHEARSE_PREBUILT=1

# rehearse NAME [WORD...]: runs the rehearsal into $scratch/NAME.out, checks
# how it ends and sets workdir to the working directory it left.
workdirs=()
rehearse() {
  local name=$1; shift
  "$root/scripts/rehearse" "$@" > "$scratch/$name.out" 2>&1 ||
    fail "rehearse $* ended with status $?"
  expect_rehearsal "$scratch/$name.out"
  workdir=$(sed -n 's|^log: *\(.*\)/log\.txt$|\1|p' "$scratch/$name.out")
  [ -f "$workdir/log.txt" ] || fail "$name: no log.txt in '$workdir'"
  workdirs+=("$workdir")
}

rehearse storcli
expect_text "$scratch/storcli.out.before" \
  "All expander(s) firmware download success." \
  "storcli/c0/e2  ABC36X  1.2.3 1.2.4 (abc36x_fw.rom) 0.9  1.0 (abc36x_psoc.rom)" \
  "storcli/c1/e62 ABC12X  1.0.0 1.1.0 (abc12x_fw.rom) 0.8  1.0 (abc12x_psoc.rom)" \
  "storcli64.exe /c1/e62 download src=abc12x_psoc.rom forceActivate mode=5 bufferid=2"
expect_text "$scratch/storcli.out" "tool outputs: ctrlcount.rst "

rehearse arcconf arcconf
expect_text "$scratch/arcconf.out.before" \
  "--psoc 1 -s 1" \
  " Power cycle system is required to activate downloaded FW." \
  "arcconf/1/2/0 X100    1.02 (report 1.00) 1.04 (x100_fw.bin) 0.9  1.0 (x100_psoc.bin)"

# An operator's own server: its scenario, profile, images and a switch.
mkdir "$scratch/images"
cat > "$scratch/own.scenario" <<'SCENARIO'
storcli-controller product="Tarvex TX-1600 HBA" subvendor=0x1F3A subdevice=0x4111 driver=tvsas3
enclosure eid=5 product=QRS48X version=3.0.9 psoc=2.0 slots=48 pd=40
image file=qrs48x_fw.rom   version=3.0.10
image file=qrs48x_psoc.rom version=2.1 kind=psoc
SCENARIO
echo "QRS48X,aux,3.0.10,qrs48x_fw.rom,aux,qrs48x_psoc.rom,E,2,0" > "$scratch/own-profile.txt"
for image in qrs48x_fw.rom qrs48x_psoc.rom; do echo "$image" > "$scratch/images/$image"; done
rehearse own --scenario "$scratch/own.scenario" --profile "$scratch/own-profile.txt" \
  --images "$scratch/images" -l run.log
expect_text "$scratch/own.out.before" \
  "storcli/c0/e5 QRS48X  3.0.9 3.0.10 (qrs48x_fw.rom) 2.0  2.1 (qrs48x_psoc.rom)"
[ -s "$workdir/run.log" ] || fail "own: -l run.log did not reach the utility"

finish
rm -rf "$scratch" "${workdirs[@]}"
