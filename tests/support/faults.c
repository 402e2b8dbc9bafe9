/* SPDX-License-Identifier: LGPL-2.1-or-later */
/*
 * Makes one system call of a program fail. It is loaded into the program with LD_PRELOAD, and
 * environment variables choose the call:
 *
 * VELKOR_FAULT_CALL       the function: "open" (and openat), "write", "pwrite", "fsync", "rename",
 *                         "close", "fstat", "fchmod", "flock" or "unlink"
 * VELKOR_FAULT_DIRECTORY  only calls on files whose path begins so are counted
 * VELKOR_FAULT_NUMBER     the number of the call that fails, from 1
 * VELKOR_FAULT_ERROR      the error number that it fails with
 * VELKOR_FAULT_REPORT     a file that is made when it fails
 */
#undef _FORTIFY_SOURCE /* which would define some of the functions itself */
#define _GNU_SOURCE 1
#include <errno.h>
#include <fcntl.h>
#include <limits.h>
#include <stdarg.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

static const char *variable(const char *name) {
  const char *value = getenv(name);
  return value == NULL ? "" : value;
}

static int number(const char *name) {
  return (int)strtol(variable(name), NULL, 10);
}

static void report(void) {
  const int file = (int)syscall(SYS_openat, AT_FDCWD, variable("VELKOR_FAULT_REPORT"),
                                O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (file >= 0)
    syscall(SYS_close, file);
}

/* Whether this call is the one to fail; sets errno. */
static int fails(const char *call, const char *path) {
  static atomic_int calls = 0;
  const char *directory = variable("VELKOR_FAULT_DIRECTORY");
  if (strcmp(call, variable("VELKOR_FAULT_CALL")) != 0 ||
      strncmp(path, directory, strlen(directory)) != 0 ||
      atomic_fetch_add(&calls, 1) + 1 != number("VELKOR_FAULT_NUMBER"))
    return 0;
  report();
  errno = number("VELKOR_FAULT_ERROR");
  return 1;
}

static int fails_on_descriptor(const char *call, int descriptor) {
  char link[64];
  char path[PATH_MAX];
  const int earlier = errno;
  snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
  const ssize_t length = readlink(link, path, sizeof path - 1);
  errno = earlier;
  path[length < 0 ? 0 : length] = '\0';
  return fails(call, path);
}

static int open_file(int directory, const char *path, int flags, mode_t mode) {
  return fails("open", path) ? -1 : (int)syscall(SYS_openat, directory, path, flags, mode);
}

/* Declares the variable `mode` and reads it, if the flags may make a file. */
#define READ_MODE(flags)                                                                           \
  mode_t mode = 0;                                                                                 \
  if (((flags)&O_CREAT) != 0 || ((flags)&O_TMPFILE) == O_TMPFILE) {                                \
    va_list more;                                                                                  \
    va_start(more, flags);                                                                         \
    mode = va_arg(more, mode_t);                                                                   \
    va_end(more);                                                                                  \
  }

int open(const char *path, int flags, ...) {
  READ_MODE(flags)
  return open_file(AT_FDCWD, path, flags, mode);
}

int open64(const char *path, int flags, ...) {
  READ_MODE(flags)
  return open_file(AT_FDCWD, path, flags, mode);
}

int openat(int directory, const char *path, int flags, ...) {
  READ_MODE(flags)
  return open_file(directory, path, flags, mode);
}

int openat64(int directory, const char *path, int flags, ...) {
  READ_MODE(flags)
  return open_file(directory, path, flags, mode);
}

ssize_t write(int descriptor, const void *bytes, size_t length) {
  return fails_on_descriptor("write", descriptor) ? -1
                                                  : syscall(SYS_write, descriptor, bytes, length);
}

ssize_t pwrite(int descriptor, const void *bytes, size_t length, off_t place) {
  return fails_on_descriptor("pwrite", descriptor)
             ? -1
             : syscall(SYS_pwrite64, descriptor, bytes, length, place);
}

ssize_t pwrite64(int descriptor, const void *bytes, size_t length, off64_t place) {
  return pwrite(descriptor, bytes, length, place);
}

int fsync(int descriptor) {
  return fails_on_descriptor("fsync", descriptor) ? -1 : (int)syscall(SYS_fsync, descriptor);
}

int rename(const char *from, const char *to) {
  return fails("rename", to) ? -1 : renameat(AT_FDCWD, from, AT_FDCWD, to);
}

/* The descriptor is closed in any case, as the system does it. */
int close(int descriptor) {
  const int failed = fails_on_descriptor("close", descriptor);
  const int error = errno;
  const int result = (int)syscall(SYS_close, descriptor);
  if (!failed)
    return result;
  errno = error;
  return -1;
}

int fstat(int descriptor, struct stat *status) {
  return fails_on_descriptor("fstat", descriptor) ? -1
                                                  : fstatat(descriptor, "", status, AT_EMPTY_PATH);
}

int fstat64(int descriptor, struct stat64 *status) {
  return fails_on_descriptor("fstat", descriptor)
             ? -1
             : fstatat64(descriptor, "", status, AT_EMPTY_PATH);
}

int fchmod(int descriptor, mode_t mode) {
  return fails_on_descriptor("fchmod", descriptor) ? -1
                                                   : (int)syscall(SYS_fchmod, descriptor, mode);
}

int flock(int descriptor, int operation) {
  return fails_on_descriptor("flock", descriptor) ? -1
                                                  : (int)syscall(SYS_flock, descriptor, operation);
}

int unlink(const char *path) {
  return fails("unlink", path) ? -1 : unlinkat(AT_FDCWD, path, 0);
}
