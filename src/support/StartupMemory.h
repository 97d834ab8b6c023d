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
namespace tolva {

void BeginStartupMemory();
void EndStartupMemory();

} // namespace tolva
