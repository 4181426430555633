#!/bin/bash
# Runs examples/cluster on a Slurm of one node and compares the merged tables and the reports with
# those of one run without shards, byte by byte: an optional check, by hand, as root of a machine
# that may be changed. It installs slurm-wlm and munge, and ends the daemons that it has started.
#
# usage: slurm.sh TESSALINK FOLDER RESPONSES [OPTION...]
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
cluster=$here/../../examples/cluster
export TESSALINK
TESSALINK=$(realpath "$1")
folder=$(realpath "$2") responses=$(realpath "$3")
shift 3

apt-get install -y -qq slurm-wlm munge >/dev/null
base=$(mktemp -d)
daemons=()
end() {
    for daemon in "${daemons[@]}"; do kill "$daemon" 2>/dev/null || true; done
    wait
    rm -rf "$base"
}
trap end EXIT

# start NAME COMMAND...: a daemon in the foreground, its output in a file.
start() {
    local log=$base/$1.log
    shift
    "$@" >"$log" 2>&1 &
    daemons+=($!)
}

configure() {
    local memory
    memory=$(awk '/MemTotal/ { print int($2 / 1024 * 0.9) }' /proc/meminfo)
    cat >"$base/slurm.conf" <<CONF
ClusterName=check
SlurmctldHost=$(hostname -s)
SlurmUser=root
AuthType=auth/munge
AuthInfo=socket=$base/munge.socket
CredType=cred/munge
ProctrackType=proctrack/pgid
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
ReturnToService=2
StateSaveLocation=$base/state
SlurmdSpoolDir=$base/spool
SlurmctldPidFile=$base/slurmctld.pid
SlurmdPidFile=$base/slurmd.pid
SlurmctldPort=16817
SlurmdPort=16818
MinJobAge=3600
NodeName=$(hostname -s) NodeAddr=127.0.0.1 CPUs=$(nproc) RealMemory=$memory State=UNKNOWN
PartitionName=all Nodes=ALL Default=YES MaxTime=INFINITE State=UP
CONF
    mkdir "$base/state" "$base/spool"
    head -c 1024 /dev/urandom >"$base/munge.key"
    chmod 400 "$base/munge.key"
}

start_slurm() {
    configure
    start munged munged --foreground --force --key-file="$base/munge.key" \
        --socket="$base/munge.socket" --pid-file="$base/munge.pid" --seed-file="$base/munge.seed" \
        --log-file="$base/munge.log"
    for _ in {1..50}; do [[ -S $base/munge.socket ]] && break || sleep 0.1; done
    export SLURM_CONF=$base/slurm.conf
    start slurmctld slurmctld -D
    start slurmd slurmd -D
    for _ in {1..100}; do
        sinfo -h -o %t 2>/dev/null | grep -q idle && return
        sleep 0.3
    done
    cat "$base"/*.log
    exit 1
}

# wait_for JOB: until it has left the queue; fails unless it was completed.
wait_for() {
    while [[ -n $(squeue -h -j "$1" -t PENDING,RUNNING,COMPLETING 2>/dev/null) ]]; do sleep 0.5; done
    scontrol show job "$1" | grep -o 'JobState=[A-Z]*' | sort | uniq -c
    ! scontrol show job "$1" | grep -o 'JobState=[A-Z]*' | grep -qv COMPLETED
}

start_slurm
chmod 755 "$base"
cd "$base"
jobs=$("$cluster/submit" "$folder" "$responses" "$base/shards" "$@")
echo "$jobs"
[[ $jobs =~ shards:\ job\ ([0-9]+),\ merge:\ job\ ([0-9]+) ]]
shards=${BASH_REMATCH[1]} merge=${BASH_REMATCH[2]}
wait_for "$shards"
wait_for "$merge"
# A single shard again: it is done, and says so.
again=$(sbatch --parsable --array=3 "$cluster/shards.sbatch" "$folder" "$responses" "$base/shards" "$@")
wait_for "$again"

code=0
"$TESSALINK" batch "$folder" "$responses" -o "$base/whole" "$@" || code=$?
((code <= 1))
cmp "$base/whole/scores.csv" "$base/shards/scores.csv"
cmp "$base/whole/failed.csv" "$base/shards/failed.csv"
rm -f "$base"/shards/{scores,failed}-*.csv "$base"/shards/.tessalink-* "$base"/whole/.tessalink-*
diff -r "$base/whole" "$base/shards"
echo "the merged tables and all reports are the same as without shards"
