// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_MEMORY_LIMIT_H
#define ZELK_APPS_WORKER_MEMORY_LIMIT_H

#include <cstdint>

namespace cli {

// Limits the address space of this process and makes known who suffers from that: what fails for
// lack of memory has many faces, from a null pointer to a crash. `events` is where the supervisor
// is told (MemoryShort) before the process dies of it. 0 mebibytes: no limit.
void limit_memory(int mebibytes, int events);

// True when the limit is what stands in the way of so many bytes more.
bool limit_forbids(std::uint64_t bytes);

// True once when memory was asked for in vain since the last call.
bool take_memory_was_short();

}  // namespace cli

#endif  // ZELK_APPS_WORKER_MEMORY_LIMIT_H
