#include "support/memory.h"

#include <malloc.h>
#include <unistd.h>

#include <fstream>

#ifdef __SANITIZE_ADDRESS__
// The sanitizer's own count; not every compiler brings the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();  // NOLINT(bugprone-reserved-identifier)
#endif

namespace keelview {

std::size_t AllocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
#endif
}

long ResidentKilobytes() {
    std::ifstream statm("/proc/self/statm");
    long whole = 0;
    long resident = 0;
    statm >> whole >> resident;
    return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

}  // namespace keelview
