#include "base/kept_memory.h"

#include <cstdlib>  // tells which C library this is

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace keelview {

void KeepMemory() {
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);              // threads share one heap: what one has given back another takes
    mallopt(M_MMAP_THRESHOLD, 32 << 20);  // the most that the library takes
    mallopt(M_TRIM_THRESHOLD, 256 << 20);
    mallopt(M_TOP_PAD, 1 << 20);  // what the heap grows by at once
#endif
}

}  // namespace keelview
