#!/usr/bin/env bash
# operations_box.sh EMPTY_DIRECTORY EXAMPLES TOOL SERVER LIBRARY...: in new namespaces, becomes systemd as process 1 of a machine
# that shares this machine's files and changes none: what is written goes to memory, and is gone with the last process.
set -euo pipefail
box=$1 examples=$2 tool=$3 server=$4
shift 4

mount -t tmpfs -o mode=755 tmpfs "$box"
mkdir "$box"/{written,work,root}
root=$box/root
mount -t overlay -o "lowerdir=/,upperdir=$box/written,workdir=$box/work" overlay "$root"

# Nothing of this machine's services, devices, sockets and scratch files.
rm -rf "$root"/{etc,lib}/systemd/system/*.wants
mount -t proc proc "$root/proc"
mount -t sysfs -o ro sysfs "$root/sys"
mount -t cgroup2 cgroup2 "$root/sys/fs/cgroup"
mount -t tmpfs -o mode=755 tmpfs "$root/run"
mount -t tmpfs -o mode=1777 tmpfs "$root/tmp"
mount -t tmpfs -o mode=755 tmpfs "$root/dev"
mkdir "$root"/dev/{shm,pts}
ln -s /proc/self/fd "$root/dev/fd"
ln -s pts/ptmx "$root/dev/ptmx"
for device in null zero full random urandom tty; do
    touch "$root/dev/$device"
    mount --bind "/dev/$device" "$root/dev/$device"
done

install -D "$tool" "$root/usr/bin/orvane-config"
install -D "$server" "$root/usr/bin/orvane-server"
install "$@" "$root/usr/lib" # the account of the server may not be able to read where they were built
mkdir -p "$root/usr/share/doc/orvane-config"
rm -rf "$root/usr/share/doc/orvane-config/examples"
cp -r "$examples" "$root/usr/share/doc/orvane-config/examples"
echo server1 >"$root/etc/hostname"
printf '127.0.0.1 localhost\n127.0.1.1 server1\n' >"$root/etc/hosts"
# The unit's filter of system calls leaves out what a sanitizer looks for leaks with.
install -d "$root/etc/systemd/system.conf.d"
printf '[Manager]\nDefaultEnvironment=ASAN_OPTIONS=detect_leaks=0\n' >"$root/etc/systemd/system.conf.d/sanitizers.conf"
printf '[Unit]\nWants=systemd-journald.service\n' >"$root/etc/systemd/system/box.target"

# Its root has to be that of a mount namespace: below another, services get neither users nor devices of their own.
cd "$root"
mkdir tmp/old
pivot_root . tmp/old
exec env -i PATH="$PATH" container=box chroot . /bin/sh -c \
    'umount --lazy /tmp/old && rmdir /tmp/old && exec /lib/systemd/systemd --system --unit=box.target'
