#include "support/StartupMemory.h"

#include <cstdint>
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif
#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace tolva {

void BeginStartupMemory() {
#if defined(__GLIBC__)
    mallopt(M_MMAP_THRESHOLD, 64 << 20);
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
}

void PrepareStartupHeap(std::size_t bytes) {
#if defined(__GLIBC__) && defined(__linux__)
    // Linux 5.14's MADV_POPULATE_WRITE, by number for older headers; an older kernel
    // refuses it and the pages come one at a time as before.
    constexpr int PopulateWrite = 23;
    // The block is taken from the heap's top and given back at once: large buffers stay
    // in the heap during start-up, and the heap is not trimmed until it ends, so the
    // next allocations are cut from these very pages.
    void* block = std::malloc(bytes);
    if (block == nullptr) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto start = (reinterpret_cast<std::uintptr_t>(block) + page - 1) & ~(page - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(block) + bytes) & ~(page - 1);
    if (end > start) madvise(reinterpret_cast<void*>(start), end - start, PopulateWrite);
    std::free(block);
#else
    (void)bytes;
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
