// SPDX-License-Identifier: Apache-2.0
#include "image/rotation.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace zelk {
namespace {

using std::ptrdiff_t;
using std::uint64_t;

// Byte n of a row is bits 8n to 8n + 7 of a word loaded from it.
static_assert(std::endian::native == std::endian::little);

constexpr ptrdiff_t kColorBytes = 3;
constexpr ptrdiff_t kTileHeight = 8;
constexpr ptrdiff_t kBlock = 64;  // pixels along each side

// Eight rows of eight bytes.
struct Tile {
  uint64_t row[8];
};

// Swaps the bits of a that the mask selects after a shift with those of b that it selects.
void exchange(uint64_t& a, uint64_t& b, int shift, uint64_t mask) {
  const uint64_t change = (a >> shift ^ b) & mask;
  b ^= change;
  a ^= change << shift;
}

// Byte c of row r becomes byte r of row c.
void transposeBytes(Tile& tile) {
  uint64_t* const row = tile.row;
  for (const int r : {0, 1, 2, 3}) exchange(row[r], row[r + 4], 32, 0x00000000FFFFFFFFU);
  for (const int r : {0, 1, 4, 5}) exchange(row[r], row[r + 2], 16, 0x0000FFFF0000FFFFU);
  for (const int r : {0, 2, 4, 6}) exchange(row[r], row[r + 1], 8, 0x00FF00FF00FF00FFU);
}

// Bit c of byte r becomes bit r of byte c.
uint64_t transposeBits(uint64_t word) {
  const auto exchangeWithin = [&word](int shift, uint64_t mask) {
    const uint64_t change = (word >> shift ^ word) & mask;
    word ^= change ^ change << shift;
  };
  exchangeWithin(7, 0x00AA00AA00AA00AAU);
  exchangeWithin(14, 0x0000CCCC0000CCCCU);
  exchangeWithin(28, 0x00000000F0F0F0F0U);
  return word;
}

uint64_t reverseBitsOfBytes(uint64_t word) {
  word = (word >> 1 & 0x5555555555555555U) | (word & 0x5555555555555555U) << 1;
  word = (word >> 2 & 0x3333333333333333U) | (word & 0x3333333333333333U) << 2;
  return (word >> 4 & 0x0F0F0F0F0F0F0F0FU) | (word & 0x0F0F0F0F0F0F0F0FU) << 4;
}

uint64_t load(const unsigned char* from, ptrdiff_t count = 8) {
  uint64_t word = 0;
  std::memcpy(&word, from, static_cast<std::size_t>(count));
  return word;
}

void store(unsigned char* to, uint64_t word, ptrdiff_t count = 8) {
  std::memcpy(to, &word, static_cast<std::size_t>(count));
}

// ---- quarter turns -----------------------------------------------------------------------------

// Asks for the rows of the same tile in the next block, on both sides. Each lies in another page of
// memory, so no processor foresees them; without this a colour page takes three times as long. g++
// drops calls of a function that only prefetches, hence the attribute.
[[gnu::always_inline]] inline void fetchNextBlock(Rows src, Rows dst, ptrdiff_t x, ptrdiff_t y,
                                                  ptrdiff_t width, ptrdiff_t rows,
                                                  ptrdiff_t pixelBytes) {
  const ptrdiff_t ahead = x + kBlock;
  if (ahead + 8 > width) return;
  for (ptrdiff_t i = 0; i < rows; ++i) __builtin_prefetch(src[y + i] + pixelBytes * ahead, 0);
  for (ptrdiff_t i = 0; i < 8; ++i) __builtin_prefetch(dst[ahead + i] + pixelBytes * y, 1);
}

// Calls move(x, y, columns, rows) for each tile, in blocks whose rows on both sides fit the nearest
// cache. The counts of a whole tile are constants, so that its loops unroll; those of a cut one at
// the edge are numbers.
template <ptrdiff_t kWidth, typename Move>
void forEachTile(ptrdiff_t width, ptrdiff_t height, Move move) {
  const auto moveTile = [&](ptrdiff_t x, ptrdiff_t y) {
    if (width - x >= kWidth && height - y >= kTileHeight) {
      using Columns = std::integral_constant<ptrdiff_t, kWidth>;
      using RowCount = std::integral_constant<ptrdiff_t, kTileHeight>;
      move(x, y, Columns{}, RowCount{});
    } else {
      move(x, y, std::min(kWidth, width - x), std::min(kTileHeight, height - y));
    }
  };
  for (ptrdiff_t top = 0; top < height; top += kBlock) {
    for (ptrdiff_t left = 0; left < width; left += kBlock) {
      for (ptrdiff_t x = left; x < std::min(left + kBlock, width); x += kWidth) {
        const ptrdiff_t bottom = std::min(top + kBlock, height);
        for (ptrdiff_t y = top; y < bottom; y += kTileHeight) moveTile(x, y);
      }
    }
  }
}

void transposeBlackWhite(Rows src, Rows dst, ptrdiff_t width, ptrdiff_t height) {
  forEachTile<64>(width, height, [=](ptrdiff_t x, ptrdiff_t y, auto columns, auto rows) {
    // The leftmost pixel of a byte is its highest bit, so rows are stacked bottom up for the
    // topmost to become the highest bit, and the bytes come out with the rightmost column first.
    Tile tile{};
    for (ptrdiff_t i = 0; i < rows; ++i) {
      tile.row[7 - i] = load(src[y + i] + x / 8, (columns + 7) / 8);
    }
    transposeBytes(tile);
    for (ptrdiff_t left = 0; left < columns; left += 8) {
      const uint64_t bytes = transposeBits(tile.row[left / 8]);
      for (ptrdiff_t i = 0; i < std::min<ptrdiff_t>(8, columns - left); ++i) {
        dst[x + left + i][y / 8] = static_cast<unsigned char>(bytes >> (56 - 8 * i));
      }
    }
  });
}

void transposeGray(Rows src, Rows dst, ptrdiff_t width, ptrdiff_t height) {
  forEachTile<8>(width, height, [=](ptrdiff_t x, ptrdiff_t y, auto columns, auto rows) {
    fetchNextBlock(src, dst, x, y, width, rows, 1);
    Tile tile{};
    for (ptrdiff_t i = 0; i < rows; ++i) tile.row[i] = load(src[y + i] + x, columns);
    transposeBytes(tile);
    for (ptrdiff_t i = 0; i < columns; ++i) store(dst[x + i] + y, tile.row[i], rows);
  });
}

void transposeColor(Rows src, Rows dst, ptrdiff_t width, ptrdiff_t height) {
  forEachTile<8>(width, height, [=](ptrdiff_t x, ptrdiff_t y, auto columns, auto rows) {
    fetchNextBlock(src, dst, x, y, width, rows, kColorBytes);
    for (ptrdiff_t j = x; j < x + columns; ++j) {
      for (ptrdiff_t i = y; i < y + rows; ++i) {
        std::memcpy(dst[j] + kColorBytes * i, src[i] + kColorBytes * j, kColorBytes);
      }
    }
  });
}

// ---- the half turn's rows ----------------------------------------------------------------------

// The bits of whole bytes in reverse order, behind as many zero bits as the dropped pixels leave
// room for.
void mirrorBlackWhite(const unsigned char* src, unsigned char* dst, ptrdiff_t width) {
  const int shift = static_cast<int>(width % 8);
  ptrdiff_t left = width / 8;
  unsigned carry = 0;  // the byte before, whose lowest bits open the next one
  for (; left >= 8; left -= 8, dst += 8) {
    // Loaded from the little end, the last byte is highest: first, in big-endian order.
    const uint64_t word = reverseBitsOfBytes(load(src + left - 8));
    const uint64_t opening = shift == 0 ? 0 : uint64_t{carry} << (64 - shift);
    store(dst, __builtin_bswap64(word >> shift | opening));
    carry = static_cast<unsigned char>(word);
  }
  for (; left > 0; --left, ++dst) {
    const auto byte = static_cast<unsigned char>(reverseBitsOfBytes(src[left - 1]));
    *dst = static_cast<unsigned char>((carry << 8 | byte) >> shift);
    carry = byte;
  }
  if (shift != 0) *dst = static_cast<unsigned char>(carry << 8 >> shift);
}

void mirrorGray(const unsigned char* src, unsigned char* dst, ptrdiff_t width) {
  ptrdiff_t left = width;
  for (; left >= 8; left -= 8, dst += 8) store(dst, __builtin_bswap64(load(src + left - 8)));
  for (; left > 0; --left) *dst++ = src[left - 1];
}

void mirrorColor(const unsigned char* src, unsigned char* dst, ptrdiff_t width) {
  for (ptrdiff_t left = width; left > 0; --left, dst += kColorBytes) {
    std::memcpy(dst, src + kColorBytes * (left - 1), kColorBytes);
  }
}

}  // namespace

void transpose(Rows src, Rows dst, int width, int height, int bitCount) {
  const auto move = bitCount == 1   ? transposeBlackWhite
                    : bitCount == 8 ? transposeGray
                                    : transposeColor;
  move(src, dst, width, height);
}

void mirror(Rows src, Rows dst, int width, int height, int bitCount) {
  const auto move = bitCount == 1 ? mirrorBlackWhite : bitCount == 8 ? mirrorGray : mirrorColor;
  for (int row = 0; row < height; ++row) move(src[row], dst[row], width);
}

}  // namespace zelk
