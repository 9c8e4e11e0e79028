/* A preloaded library for scripts/allocation-sweep.sh: counts the program's
 * allocations (malloc, calloc, realloc, and so every operator new) from the
 * start of main, and fails the one numbered FAILING_ALLOCATION as a system
 * out of memory does, with a null pointer and ENOMEM. Without
 * FAILING_ALLOCATION (or with 0) nothing fails; at exit the count is written
 * to the file FAILING_ALLOCATION_COUNT names, where it names one.
 *
 *   cc -shared -fPIC -o FailingAllocation.so scripts/FailingAllocation.c -ldl
 *   FAILING_ALLOCATION=120 LD_PRELOAD=./FailingAllocation.so zalt-lts-catalogue check texts.xml
 *
 * glibc only: it forwards to glibc's own allocator, and arms itself by
 * standing in for the C library's call of main. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <unistd.h>

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);

typedef int (*MainFunction)(int, char**, char**);
typedef int (*StartMainFunction)(MainFunction, int, char**, void (*)(void), void (*)(void), void (*)(void),
                                 void*);

static int armed;
static unsigned long counted;
static unsigned long failing;
static MainFunction programMain;

/* Whether the allocation being made is the one to fail. */
static int failsNow(void) {
  if (!armed) {
    return 0;
  }
  if (++counted != failing) {
    return 0;
  }
  errno = ENOMEM;
  return 1;
}

void* malloc(size_t size) { return failsNow() ? NULL : __libc_malloc(size); }

void* calloc(size_t count, size_t size) { return failsNow() ? NULL : __libc_calloc(count, size); }

void* realloc(void* block, size_t size) { return failsNow() ? NULL : __libc_realloc(block, size); }

static int armedMain(int argc, char** argv, char** environment) {
  const char* const number = getenv("FAILING_ALLOCATION");
  failing = number != NULL ? strtoul(number, NULL, 10) : 0;
  armed = 1;
  return programMain(argc, argv, environment);
}

int __libc_start_main(MainFunction main, int argc, char** argv, void (*init)(void), void (*fini)(void),
                      void (*loaderFini)(void), void* stackEnd) {
  const StartMainFunction start = (StartMainFunction)dlsym(RTLD_NEXT, "__libc_start_main");
  programMain = main;
  return start(armedMain, argc, argv, init, fini, loaderFini, stackEnd);
}

/* Written without stdio, which would allocate while it counts. */
__attribute__((destructor)) static void writeCount(void) {
  const char* const path = getenv("FAILING_ALLOCATION_COUNT");
  if (!armed || path == NULL) {
    return;
  }
  armed = 0;
  char text[32];
  const int length = snprintf(text, sizeof text, "%lu\n", counted);
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (file >= 0) {
    if (write(file, text, (size_t)length) != length) {
      /* The sweep finds no count and says so. */
    }
    close(file);
  }
}
