#pragma once
// How the heap treats large buffers while the game starts, and after.
//
// Start-up reads and decodes pictures one after another, each in buffers of a megabyte
// or more. By default glibc gives each such buffer a mapping of its own, handed back when
// freed, and the next one is faulted in afresh page by page, which costs more than the
// decoding. During start-up they are kept in the heap, so that the pages are used again;
// once it is over, what is left over goes back to the system and large buffers have
// mappings of their own again, so a long game holds no more than it uses. Elsewhere than
// glibc both calls do nothing.
#include <cstddef>

namespace tolva {

void BeginStartupMemory();
void EndStartupMemory();

// Makes the next `bytes` of the heap ready in one go, so that the pictures and the level
// set that come next find their pages there. A page the program touches first costs a
// fault of its own, and on a virtual machine one at a time is three times dearer than
// asking the kernel for all of them at once. Only worth it once nothing forks any more:
// after a fork each page written before costs a fault again. Where the kernel cannot
// fill pages ahead this does nothing.
void PrepareStartupHeap(std::size_t bytes);

} // namespace tolva
