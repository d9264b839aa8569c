// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_PAGE_LIMIT_H
#define ZELK_READERS_PAGE_LIMIT_H

struct FIBITMAP;

// True when a picture may be decoded, told from its header (a bitmap loaded without pixels; null
// passes). Decoders allocate and fill the whole picture that a header declares, so a file of a
// hundred bytes could ask for more memory than the machine has. The limit is 2,147,483,647 pixels.
bool may_be_decoded(FIBITMAP* header);

#endif  // ZELK_READERS_PAGE_LIMIT_H
