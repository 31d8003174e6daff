#!/bin/sh
# usage: stage-headers.sh FOLDER
# Fills FOLDER with headers that differ from the installed packages' in what macOS has and what it lacks.
set -eu
cd "$1"
rm -rf posix objc site third-party
mkdir -p objc site third-party

cp -r /usr/include/*-linux-musl posix
sed '/NO_VENDOR_AVAILABILITY/d' /usr/lib/llvm-19/include/c++/v1/__config_site >site/__config_site
ln -s /usr/include/nlohmann /usr/include/utf8proc.h third-party/

# gcc's Objective-C headers, with the types that literals and ARC need.
cp "$(gcc -print-file-name=include)"/objc/*.h objc/
sed -i 's/return object->class_pointer;/return Nil;/' objc/runtime.h
sed -i -E 's/typedef unsigned char +BOOL;/typedef bool BOOL;/
    s/^#define YES .*/#define YES __objc_yes/
    s/^#define NO .*/#define NO __objc_no/' objc/objc.h

cd posix
rm -rf byteswap.h elf.h endian.h link.h malloc.h mntent.h mqueue.h netpacket pty.h scsi shadow.h stropts.h \
    threads.h values.h
for header in auxv epoll eventfd fanotify fsuid inotify io kd klog membarrier personality prctl procfs reg sendfile \
    signalfd soundcard statfs sysinfo sysmacros timerfd user vfs vt; do
    rm -f "sys/$header.h"
done
sed -i '/#include <endian.h>/d' sys/*.h

# Darwin's widths: 64-bit types are long long, which a Linux build takes for long.
sed -i -E 's/^#define _Int64 long$/#define _Int64 long long/
    s/^typedef _Int64 time_t;/typedef long time_t;/
    s/^typedef _Int64 suseconds_t;/typedef int suseconds_t;/
    s/^(typedef (un)?signed) _Int64( +u?intmax_t;)/\1 long\3/
    s/^typedef unsigned mode_t;/typedef unsigned short mode_t;/' bits/alltypes.h
sed -i -E 's/\bst_([amc])tim\b/st_\1timespec/g' bits/stat.h sys/stat.h

absent='accept4|clock_nanosleep|CLOCK_BOOTTIME|dup3|explicit_bzero|fdatasync|fexecve|get_current_dir_name'
absent="$absent|getrandom|memrchr|MSG_NOSIGNAL|O_DIRECT|O_PATH|O_TMPFILE|pipe2|posix_fadvise|posix_fallocate|ppoll"
absent="$absent|pthread_barrier_wait|pthread_condattr_setclock|pthread_mutex_timedlock|pthread_setname_np"
absent="$absent|pthread_spin_lock|qsort_r|reallocarray|secure_getenv|sem_timedwait|sigqueue|sigtimedwait|sigwaitinfo"
absent="$absent|SOCK_CLOEXEC|SOCK_NONBLOCK|strchrnul|timer_create"
sed -i -E "/^#define ($absent)\b/d; /^[a-z].*\b($absent) ?\(.*;/d" ./*.h sys/*.h
