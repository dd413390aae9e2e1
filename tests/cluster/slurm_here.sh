#!/bin/bash
# A real Slurm on this one machine, without systemd and without an accounting database, as root; nothing outside DIR.
#
#   slurm_here.sh start DIR    writes DIR/slurm.conf, starts munged, slurmctld and slurmd, waits until the node is idle
#   slurm_here.sh stop DIR     ends them by the process ids that they wrote, and waits until they have ended
#
# Between the two, sbatch and the others work with SLURM_CONF=DIR/slurm.conf. Memory limits are enforced by sampling.
set -euo pipefail
action=$1
dir=$(realpath -m "$2")
node=$(hostname -s)
export SLURM_CONF=$dir/slurm.conf

configuration() {
    local memory port
    memory=$(awk '/^MemTotal/ {print int($2 / 1024 * 0.9)}' /proc/meminfo)
    port=$((20000 + $$ % 10000 * 2)) # several of these may run at once
    cat <<END
ClusterName=here
SlurmctldHost=$node(127.0.0.1)
SlurmctldPort=$port
SlurmdPort=$((port + 1))
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket=$dir/munge/socket
CredType=cred/munge
StateSaveLocation=$dir/state
SlurmdSpoolDir=$dir/spool
SlurmctldPidFile=$dir/slurmctld.pid
SlurmdPidFile=$dir/slurmd.pid
SlurmctldLogFile=$dir/slurmctld.log
SlurmdLogFile=$dir/slurmd.log
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
MpiDefault=none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU_Memory
SchedulerParameters=sched_interval=1,bf_interval=1
JobAcctGatherType=jobacct_gather/linux
JobAcctGatherFrequency=1
JobAcctGatherParams=OverMemoryKill
AccountingStorageType=accounting_storage/none
JobCompType=jobcomp/filetxt
JobCompLoc=$dir/jobs.txt
MinJobAge=3600
KillWait=5
ReturnToService=2
SlurmdParameters=config_overrides
NodeName=$node NodeAddr=127.0.0.1 CPUs=$(nproc) RealMemory=$memory State=UNKNOWN
PartitionName=work Nodes=$node Default=YES MaxTime=60 DefMemPerCPU=512 State=UP
END
}

start() {
    mkdir -p "$dir"/{munge,state,spool}
    chmod 755 "$dir" "$dir/munge"
    (umask 077 && head -c 128 /dev/urandom >"$dir/munge/key")
    configuration >"$SLURM_CONF"
    munged --key-file="$dir/munge/key" --socket="$dir/munge/socket" --pid-file="$dir/munge/pid" \
        --log-file="$dir/munge/log" --seed-file="$dir/munge/seed" --force
    slurmctld -c
    slurmd -c
    for _ in $(seq 60); do
        if sinfo --noheader --format=%T 2>>"$dir/wait.log" | grep -qx idle; then return 0; fi
        sleep 0.5
    done
    tail -n 20 "$dir"/slurm*.log >&2
    return 1
}

stop() {
    local file process
    for file in slurmd.pid slurmctld.pid munge/pid; do
        [ -s "$dir/$file" ] || continue
        process=$(cat "$dir/$file")
        # One that has ended by itself needs no signal. They still write files while they end.
        if kill -0 "$process" 2>/dev/null; then kill "$process"; fi
        for _ in $(seq 100); do
            kill -0 "$process" 2>/dev/null || break
            sleep 0.1
        done
    done
}

"$action"
