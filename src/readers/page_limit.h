// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PAGE_LIMIT_H
#define ZELK_READERS_PAGE_LIMIT_H

#include <cstdint>

struct FIBITMAP;

// True when a picture of this size may be decoded: it has at most 2,147,483,647 pixels. Decoders
// allocate and fill the whole picture that a header declares, so a file of a hundred bytes could
// ask for more memory than the machine has.
bool may_be_decoded(std::uint64_t width, std::uint64_t height);

// The same of a header, a bitmap loaded without pixels; null passes.
bool may_be_decoded(FIBITMAP* header);

#endif  // ZELK_READERS_PAGE_LIMIT_H
