// The start-up heap: the pages made ready ahead must be the ones the next allocations get,
// so that the pictures read after it fault nothing in.
#include "support/StartupMemory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace tolva;

namespace {

// How many of the pages wholly inside [block, block + size) are in memory. Asked of the
// kernel, not counted in faults: a kernel that hands out large folios or huge pages
// takes fewer faults for the same pages, so fault counts say little across machines.
// (Unused where the sanitizer owns the heap and the test skips.)
[[maybe_unused]] std::size_t ResidentPages(const void* block, std::size_t size, std::size_t* pagesInAll) {
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto start = (reinterpret_cast<std::uintptr_t>(block) + page - 1) & ~(page - 1);
    const auto end = (reinterpret_cast<std::uintptr_t>(block) + size) & ~(page - 1);
    *pagesInAll = end > start ? (end - start) / page : 0;
    if (*pagesInAll == 0) return 0;
    std::vector<unsigned char> inMemory(*pagesInAll);
    if (mincore(reinterpret_cast<void*>(start), end - start, inMemory.data()) != 0) return 0;
    std::size_t resident = 0;
    for (const unsigned char flags : inMemory) resident += flags & 1U;
    return resident;
}

} // namespace

TEST(StartupMemory, APreparedHeapHandsOutPagesThatAreAlreadyThere) {
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TOLVA_SANITIZED_HEAP 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define TOLVA_SANITIZED_HEAP 1
#endif
#if defined(TOLVA_SANITIZED_HEAP)
    GTEST_SKIP() << "under AddressSanitizer the heap is the sanitizer's, not glibc's";
#elif !defined(__GLIBC__) || !defined(__linux__)
    GTEST_SKIP() << "the start-up heap is glibc's on Linux";
#else
    // A kernel without MADV_POPULATE_WRITE (before 5.14) cannot fill pages ahead.
    void* probe = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(probe, MAP_FAILED);
    const bool canPopulate = madvise(probe, 4096, 23) == 0;
    munmap(probe, 4096);
    if (!canPopulate) GTEST_SKIP() << "this kernel cannot fill pages ahead (MADV_POPULATE_WRITE)";

    BeginStartupMemory();
    constexpr std::size_t Prepared = std::size_t{4} << 20;
    PrepareStartupHeap(Prepared);
    // Three pictures' worth, as start-up reads them: a megabyte and a half, then less.
    // Every page of them is in memory before the program writes a byte.
    const std::vector<std::size_t> sizes{std::size_t{1536} << 10, std::size_t{700} << 10, std::size_t{393} << 10};
    std::vector<void*> blocks;
    for (const std::size_t size : sizes) {
        void* block = std::malloc(size);
        ASSERT_NE(block, nullptr);
        std::size_t pages = 0;
        EXPECT_EQ(ResidentPages(block, size, &pages), pages) << "a block of " << size << " bytes";
        EXPECT_GT(pages, 90U);
        std::memset(block, 0x5A, size);
        blocks.push_back(block);
    }
    for (void* block : blocks) std::free(block);
    EndStartupMemory();

    // Once start-up is over, what it left free goes back to the system: none of those
    // pages is the program's any more (unmapped, or mapped but not in memory).
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        std::size_t pages = 0;
        EXPECT_LE(ResidentPages(blocks[i], sizes[i], &pages), 2U) << "a freed block of " << sizes[i] << " bytes";
    }
#endif
}
