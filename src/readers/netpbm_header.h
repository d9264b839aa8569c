// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_NETPBM_HEADER_H
#define ZELK_READERS_NETPBM_HEADER_H

#include <cstdio>

// True when a PBM, PGM, PPM or PFM file cannot hold a picture of the size that its header tells:
// that takes two numbers of at least 1, both within 31 bits, and at most 1,000 pixels for each byte
// of the file. FreeImage believes any header: beyond 32 bits it writes outside of the picture's
// memory, and a file of 20 bytes keeps it busy for minutes. False for every other format, which is
// one of FREE_IMAGE_FORMAT.
bool is_impossible_netpbm(int format, const char* path);
bool is_impossible_netpbm(int format, FILE* file);

#endif  // ZELK_READERS_NETPBM_HEADER_H
