// Loaded into a program before the system's library, this fails one call to the file system: the one whose number,
// counted from 1 over all kinds of calls, stands in FAILING_CALL. The name of the call is then written to the file that
// FAILED_CALL names. Calls are counted from the program's start if it was started with these, and otherwise, as in the
// test program that is linked with this, from where it asks for it. Nothing is synced: tests need not wait for the
// disk.
#define _GNU_SOURCE
#include "failing_calls.h"

#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdarg.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

// What the program starts is left alone: a sanitizer that tells of a leak asks another program for the names of
// functions, and would wait for it in vain.
__attribute__((constructor)) static void leave_others_alone(void) { unsetenv("LD_PRELOAD"); }

// By system calls: those do not count.
static void tell(const char *name) {
  const char *path = getenv("FAILED_CALL");
  const long fd = syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  syscall(SYS_write, fd, name, strlen(name));
  syscall(SYS_close, fd);
}

static long failing;  // 0: none
static _Atomic long calls;

void count_calls_from_here(void) {
  const char *wanted = getenv("FAILING_CALL");
  failing = wanted == NULL ? 0 : strtol(wanted, NULL, 10);
  calls = 0;
}

__attribute__((constructor)) static void count_calls_from_the_start(void) { count_calls_from_here(); }

static bool fails(const char *name) {
  const bool is_failing = failing != 0 && ++calls == failing;
  if (is_failing) {
    tell(name);
    errno = EIO;
  }
  return is_failing;
}

// The function of the same name that the program would have called.
#define FIND_NEXT(result, name, ...)           \
  static result (*next)(__VA_ARGS__);          \
  if (next == NULL) {                          \
    *(void **)&next = dlsym(RTLD_NEXT, #name); \
  }

// A call that does nothing when it fails.
#define FAILING_CALL(result, failure, name, arguments, ...) \
  result name(__VA_ARGS__);                                 \
  result name(__VA_ARGS__) {                                \
    FIND_NEXT(result, name, __VA_ARGS__)                    \
    return fails(#name) ? (failure) : next arguments;       \
  }

// A call that does its work and tells of a failure all the same.
#define FAILING_AFTERWARDS(name, type) \
  int name(type subject);              \
  int name(type subject) {             \
    FIND_NEXT(int, name, type)         \
    const int done = next(subject);    \
    return fails(#name) ? -1 : done;   \
  }

#define FAILING_OPEN(name)                                                      \
  int name(const char *path, int flags, ...);                                   \
  int name(const char *path, int flags, ...) {                                  \
    FIND_NEXT(int, name, const char *, int, ...)                                \
    va_list arguments;                                                          \
    va_start(arguments, flags);                                                 \
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0; \
    va_end(arguments);                                                          \
    return fails(#name) ? -1 : next(path, flags, mode);                         \
  }

FAILING_OPEN(open)
FAILING_OPEN(open64)
FAILING_CALL(FILE *, NULL, fopen, (path, mode), const char *path, const char *mode)
FAILING_CALL(FILE *, NULL, fopen64, (path, mode), const char *path, const char *mode)
FAILING_CALL(FILE *, NULL, fdopen, (fd, mode), int fd, const char *mode)
FAILING_CALL(int, -1, mkostemp, (name, flags), char *name, int flags)
FAILING_CALL(int, -1, mkostemp64, (name, flags), char *name, int flags)
FAILING_CALL(ssize_t, -1, read, (fd, data, size), int fd, void *data, size_t size)
FAILING_CALL(ssize_t, -1, pread, (fd, data, size, at), int fd, void *data, size_t size, off_t at)
FAILING_CALL(ssize_t, -1, pread64, (fd, data, size, at), int fd, void *data, size_t size, off64_t at)
FAILING_CALL(ssize_t, -1, write, (fd, data, size), int fd, const void *data, size_t size)
FAILING_CALL(ssize_t, -1, pwrite, (fd, data, size, at), int fd, const void *data, size_t size, off_t at)
FAILING_CALL(ssize_t, -1, pwrite64, (fd, data, size, at), int fd, const void *data, size_t size, off64_t at)
FAILING_CALL(ssize_t, -1, writev, (fd, parts, count), int fd, const struct iovec *parts, int count)
FAILING_CALL(size_t, 0, fread, (data, size, items, file), void *data, size_t size, size_t items, FILE *file)
FAILING_CALL(size_t, 0, fwrite, (data, size, items, file), const void *data, size_t size, size_t items, FILE *file)
FAILING_CALL(int, -1, ftruncate, (fd, size), int fd, off_t size)
FAILING_CALL(int, -1, ftruncate64, (fd, size), int fd, off64_t size)
FAILING_CALL(int, -1, flock, (fd, operation), int fd, int operation)
FAILING_CALL(int, -1, chmod, (path, mode), const char *path, mode_t mode)
FAILING_CALL(int, -1, fchmod, (fd, mode), int fd, mode_t mode)
FAILING_CALL(int, -1, fchdir, (fd), int fd)
FAILING_CALL(int, -1, mkdir, (path, mode), const char *path, mode_t mode)
FAILING_CALL(char *, NULL, mkdtemp, (name), char *name)
FAILING_CALL(DIR *, NULL, opendir, (path), const char *path)
FAILING_CALL(DIR *, NULL, fdopendir, (fd), int fd)
FAILING_CALL(struct dirent *, NULL, readdir, (folder), DIR *folder)
FAILING_CALL(struct dirent64 *, NULL, readdir64, (folder), DIR *folder)
FAILING_CALL(char *, NULL, getcwd, (path, size), char *path, size_t size)
FAILING_CALL(ssize_t, -1, readlink, (path, target, size), const char *path, char *target, size_t size)
FAILING_CALL(int, -1, rename, (from, to), const char *from, const char *to)
FAILING_CALL(int, -1, renameat2, (from_folder, from, to_folder, to, flags), int from_folder, const char *from,
             int to_folder, const char *to, unsigned flags)
FAILING_CALL(int, -1, remove, (path), const char *path)
FAILING_CALL(int, -1, dup, (fd), int fd)
FAILING_CALL(int, -1, dup2, (fd, to), int fd, int to)
FAILING_CALL(int, -1, fstat, (fd, found), int fd, struct stat *found)
FAILING_CALL(int, -1, fstat64, (fd, found), int fd, struct stat64 *found)
FAILING_CALL(int, -1, stat, (path, found), const char *path, struct stat *found)
FAILING_CALL(int, -1, stat64, (path, found), const char *path, struct stat64 *found)
FAILING_CALL(int, -1, lstat, (path, found), const char *path, struct stat *found)
FAILING_CALL(int, -1, lstat64, (path, found), const char *path, struct stat64 *found)
FAILING_CALL(char *, NULL, realpath, (path, resolved), const char *path, char *resolved)
FAILING_AFTERWARDS(close, int)
FAILING_AFTERWARDS(fclose, FILE *)
FAILING_AFTERWARDS(fflush, FILE *)

#define FAILING_SYNC(name)        \
  int name(int fd);               \
  int name(int fd) {              \
    (void)fd;                     \
    return fails(#name) ? -1 : 0; \
  }

FAILING_SYNC(fsync)
FAILING_SYNC(fdatasync)

void sync(void) {}
