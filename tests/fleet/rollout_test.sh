#!/usr/bin/env bash
# Rolls the Linux build out with the playbook to six simulated servers at
# once, each a local connection with its own working directory and lab
# scenario, checks the fleet summary and what was kept of each server, then
# power-cycles every server and rolls out again: all are up to date but the
# one without an expander. Also checks the Windows path for syntax.
#   rollout_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
root=$(realpath "$1")
build=$(realpath "$2")
. "$root/tests/fleet/expect.sh"
scratch=$(mktemp -d)
playbook=$root/deploy/ansible/rollout.yml
export ANSIBLE_LOCAL_TEMP=$scratch/ansible ANSIBLE_REMOTE_TEMP=$scratch/ansible ANSIBLE_FORKS=6
export ANSIBLE_NOCOLOR=1 ANSIBLE_RETRY_FILES_ENABLED=0 ANSIBLE_PIPELINING=1

ansible-playbook --syntax-check -i "$root/deploy/ansible/inventories/example.ini" "$playbook" \
  > "$scratch/syntax.out" 2>&1 || fail "syntax check: $(cat "$scratch/syntax.out")"

# One profile and its images for the whole fleet, both families' rows.
cat "$root"/samples/storcli-profile.txt "$root"/samples/arcconf-profile.txt > "$scratch/fleet-profile.txt"
mkdir "$scratch/images"
cut -d, -f4,6 "$scratch/fleet-profile.txt" | tr ',' '\n' | while read -r image; do
  echo "$image" > "$scratch/images/$image"
done

# Each server is a working directory holding its scenario: the hardware.
declare -A scenarios=(
  [up-to-date]=$root/tests/fleet/servers/up-to-date.scenario
  [storcli-behind]=$root/samples/storcli-server.scenario
  [arcconf-behind]=$root/samples/arcconf-server.scenario
  [partly-failing]=$root/tests/fleet/servers/partly-failing.scenario
  [failing]=$root/tests/fleet/servers/failing.scenario
  [no-expander]=$root/tests/fleet/servers/no-expander.scenario
)
{
  echo "all:"
  echo "  vars:"
  echo "    ansible_connection: local"
  echo "    ansible_python_interpreter: $(command -v python3)"
  echo "    sasfwctl_utility: $build/sasfwctl"
  echo "    sasfwctl_tools: [$build/lab/storcli64.exe]"
  echo "    sasfwctl_profile: $scratch/fleet-profile.txt"
  echo "    sasfwctl_images: [$(ls -d "$scratch"/images/* | paste -sd,)]"
  echo "    sasfwctl_environment: {PATH: '$build/lab:$PATH'}"
  echo "  hosts:"
  for server in "${!scenarios[@]}"; do
    mkdir -p "$scratch/servers/$server"
    cp "${scenarios[$server]}" "$scratch/servers/$server/lab.scenario"
    echo "    $server:"
    echo "      sasfwctl_workdir: $scratch/servers/$server"
    # Host variables: this server's family is asked for its PSoC too.
    if [ "$server" = arcconf-behind ]; then echo "      sasfwctl_switches: [--psoc, '1', -s, '1']"; fi
  done
} > "$scratch/inventory.yml"

# rollout N: roll-out N into results-N; failed servers make the status 2.
rollout() {
  local status=0
  ansible-playbook -i "$scratch/inventory.yml" "$playbook" \
    -e "sasfwctl_results_dir=$scratch/results-$1" > "$scratch/rollout-$1.out" 2>&1 || status=$?
  [ "$status" -eq 2 ] || fail "roll-out $1 ended with status $status, not 2 (failed servers)"
  summary=$scratch/results-$1/summary.md
  [ -f "$summary" ] || { fail "roll-out $1 wrote no summary"; cat "$scratch/rollout-$1.out" >&2; }
}

rollout 1
expect_text "$summary" \
  "| up-to-date | ok | 0 | every expander up to date | 2 | 0 | 0 |" \
  "| storcli-behind | changed | 0 | images written, power cycle required | 3 | 2 | 0 |" \
  "| arcconf-behind | changed | 0 | images written, power cycle required | 2 | 1 | 0 |" \
  "| partly-failing | failed | 1 | some expanders failed (storcli: and at least one was written) | 2 | 1 | 1 |" \
  "| failing | failed | 3 | failures, nothing written, the last expander failed: status 3 of its tool command | 1 | 0 | 1 |" \
  "| no-expander | failed | 171 | no expander to work on | 0 | 0 | 0 |"
expect_count 7 "$summary" "| "  # the header and one row a server
for server in "${!scenarios[@]}"; do
  for kept in console.txt log.txt; do
    [ -s "$scratch/results-1/$server/$kept" ] || fail "no $kept kept of $server"
  done
done
expect_text "$scratch/results-1/storcli-behind/console.txt" "All expander(s) firmware download success."
expect_text "$scratch/results-1/failing/log.txt" "psoc_download_log_0_62_t1"
# Each server ran in its own directory, against its own scenario.
expect_text "$scratch/servers/arcconf-behind/lab.scenario.calls" "expanderupgrade 1 enclosure 0 2 0"
expect_text "$scratch/rollout-1.out" "changed: [storcli-behind]" "fatal: [failing]"

for server in "${!scenarios[@]}"; do
  (cd "$scratch/servers/$server" && "$build/lab/labctl" powercycle > /dev/null)
done
rollout 2
for server in up-to-date storcli-behind arcconf-behind partly-failing failing; do
  expect_text "$summary" "| $server | ok | 0 | every expander up to date |"
  # Nothing new to copy and nothing written: the recap shows no change.
  grep -qE "^$server +: ok=[0-9]+ +changed=0 +unreachable=0 +failed=0 " "$scratch/rollout-2.out" ||
    fail "$server: recap of roll-out 2 is not all ok"
done
expect_text "$summary" "| no-expander | failed | 171 | no expander to work on | 0 | 0 | 0 |"

finish
rm -rf "$scratch"
