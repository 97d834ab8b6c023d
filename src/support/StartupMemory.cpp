#include "support/StartupMemory.h"

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace tolva {

void BeginStartupMemory() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
}

void EndStartupMemory() {
#if defined(__GLIBC__)
    malloc_trim(0);
    mallopt(M_MMAP_THRESHOLD, 256 << 10);
    mallopt(M_TRIM_THRESHOLD, 1 << 20);
#endif
}

} // namespace tolva
