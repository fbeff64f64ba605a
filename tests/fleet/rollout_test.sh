#!/usr/bin/env bash
# Rolls the Linux build out to one simulated server for each outcome, each a
# local connection with its own working directory and scenario; checks the
# summary and what was kept. Then power-cycles them and rolls out again:
# nothing changes, all are up to date but the one without an expander.
# Also checks the Windows path's syntax.
#   rollout_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
root=$(realpath "$1")
build=$(realpath "$2")
. "$root/tests/fleet/expect.sh"
scratch=$(mktemp -d)
ansible=$root/deploy/ansible
declare -A scenarios=(
  [storcli-behind]=$root/samples/storcli-server.scenario
  [partly-failing]=$root/tests/fleet/servers/partly-failing.scenario
  [failing]=$root/tests/fleet/servers/failing.scenario
  [no-expander]=$root/tests/fleet/servers/no-expander.scenario
)
# The playbook's own settings, whatever the folder, and one fork a server.
export ANSIBLE_CONFIG=$ansible/ansible.cfg ANSIBLE_FORKS=${#scenarios[@]}
export ANSIBLE_NOCOLOR=1 ANSIBLE_STDOUT_CALLBACK=default
export ANSIBLE_LOCAL_TEMP=$scratch/tmp ANSIBLE_REMOTE_TEMP=$scratch/tmp

ansible-playbook --syntax-check -i "$ansible/inventories/example.ini" "$ansible/rollout.yml" \
  > "$scratch/syntax.out" 2>&1 || fail "syntax check: $(cat "$scratch/syntax.out")"

# Steps run the controller's own Python, not a wrapper found on the PATH.
cat > "$scratch/inventory.yml" <<INVENTORY
all:
  vars:
    ansible_connection: local
    ansible_python_interpreter: '{{ ansible_playbook_python }}'
    sasfwctl_utility: $build/sasfwctl
    sasfwctl_tools: [$build/lab/storcli64.exe]
    sasfwctl_profile: $root/samples/storcli-profile.txt
    sasfwctl_environment: {PATH: '$build/lab:$PATH'}
  hosts:
INVENTORY
# Each server is a working directory holding its scenario, the hardware. It
# takes only the images its scenario knows, to keep the copies few.
mkdir "$scratch/images"
for server in "${!scenarios[@]}"; do
  install -D -m 644 "${scenarios[$server]}" "$scratch/servers/$server/lab.scenario"
  images=$(sed -n "s|^image file=\([^ ]*\).*|$scratch/images/\1|p" "${scenarios[$server]}")
  for image in $images; do echo "${image##*/}" > "$image"; done
  vars="sasfwctl_workdir: $scratch/servers/$server, sasfwctl_images: [$(paste -sd, <<< "$images")]"
  [ "$server" != failing ] || vars+=", sasfwctl_switches: [-s, '0']"  # switches of its own
  echo "    $server: {$vars}"
done >> "$scratch/inventory.yml"

# rollout N: roll-out N into results-N; failed servers make the status 2.
rollout() {
  local status=0
  ansible-playbook -i "$scratch/inventory.yml" "$ansible/rollout.yml" \
    -e "sasfwctl_results_dir=$scratch/results-$1" > "$scratch/rollout-$1.out" 2>&1 || status=$?
  [ "$status" -eq 2 ] || { fail "roll-out $1 ended in $status"; cat "$scratch/rollout-$1.out" >&2; }
  summary=$scratch/results-$1/summary.md
}

rollout 1
expect_text "$summary" \
  "| storcli-behind | changed | 0 | images written, power cycle required | 3 | 2 | 0 |" \
  "| partly-failing | failed | 1 | some expanders failed (storcli: and at least one was written) | 2 | 1 | 1 |" \
  "| failing | failed | 3 | failures, nothing written, the last expander failed: status 3 of its tool command | 1 | 0 | 1 |" \
  "| no-expander | failed | 171 | no expander to work on | 0 | 0 | 0 |"
expect_count 5 "$summary" "| "  # the header and one row a server
for server in "${!scenarios[@]}"; do
  expect_text "$scratch/results-1/$server/log.txt" "storcli64.exe  show ctrlcount"
  expect_text "$scratch/results-1/$server/console.txt" "Expander Firmware Update Utilty"
  (cd "$scratch/servers/$server" && "$build/lab/labctl" powercycle > /dev/null)
done
expect_text "$scratch/results-1/failing/log.txt" "psoc_download_log_0_62_t1" "param, wait seconds"
expect_text "$scratch/servers/no-expander/lab.scenario.calls" "arcconf.exe"  # found on its PATH
expect_text "$scratch/rollout-1.out" "changed: [storcli-behind]" "fatal: [failing]"

rollout 2
expect_count 3 "$summary" "| ok | 0 | every expander up to date |"
expect_text "$summary" "| no-expander | failed | 171 | no expander to work on | 0 | 0 | 0 |"
# Nothing new to copy and nothing written: the recap shows no change.
expect_count 4 "$scratch/rollout-2.out" " changed=0 "
expect_count 1 "$scratch/rollout-2.out" " failed=1 "

finish
rm -rf "$scratch"
