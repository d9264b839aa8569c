// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_SUPPORT_HEAPGROWTH_H
#define ZELK_TESTS_SUPPORT_HEAPGROWTH_H

#include <malloc.h>

#include <cstddef>

// Bytes that are in use on the C library's heap. Under the address sanitizer nothing happens there;
// it finds leaks by itself.
inline std::size_t heap_in_use() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

// Bytes that a number of calls leave in use, after one that may set things up for the others.
template <class Call>
std::ptrdiff_t heap_growth(int calls, Call call) {
  call();
  const std::size_t before = heap_in_use();
  for (int i = 0; i < calls; ++i) call();
  return static_cast<std::ptrdiff_t>(heap_in_use() - before);
}

#endif  // ZELK_TESTS_SUPPORT_HEAPGROWTH_H
