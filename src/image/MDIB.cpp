// SPDX-License-Identifier: Apache-2.0
#include "image/MDIB.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "image/rotation.h"

namespace zelk {
namespace {

constexpr int kDefaultResolution = 300;

// Bytes in a row padded to whole 32-bit words, or 0 where no row can be had.
int lineLengthOf(int width, int bitCount) {
  if (width <= 0 || (bitCount != 1 && bitCount != 8 && bitCount != 24)) return 0;
  const std::int64_t bytes = (std::int64_t{width} * bitCount + 31) / 32 * 4;
  return bytes <= INT_MAX ? static_cast<int>(bytes) : 0;
}

// A page can pass 4 GB.
std::size_t sizeOf(const MDIB& dib) {
  return static_cast<std::size_t>(dib.m_nLineLength) * static_cast<std::size_t>(dib.m_nHeight);
}

int copyPixels(const MDIB& from, MDIB& to) {
  if (!to.InitUncleared(from.m_nWidth, from.m_nHeight, from.m_nBitCount, from.m_nResolutionX))
    return 0;
  std::memcpy(to.m_lpBuf, from.m_lpBuf, sizeOf(to));
  return 1;
}

// Gives the destination its size and lets the pixels be moved. A raster that is its own destination
// has been cleared by then, and so has nothing to move.
template <typename Move>
int turn(const MDIB& src, MDIB& dst, int width, int height, Move move) {
  if (src.IsEmpty()) return 0;
  if (!dst.Init(width, height, src.m_nBitCount, src.m_nResolutionX)) return 0;
  if (&src != &dst) move();
  return 1;
}

Rows topDown(const MDIB& dib) {
  return {dib.m_lpLine, 1};
}
Rows bottomUp(const MDIB& dib) {
  return {dib.m_lpLine + (dib.m_nHeight - 1), -1};
}

}  // namespace

MDIB::MDIB()
    : m_lpLine(nullptr),
      m_lpBuf(nullptr),
      m_nWidth(0),
      m_nHeight(0),
      m_nBitCount(0),
      m_nLineLength(0),
      m_nResolutionX(kDefaultResolution),
      m_nResolutionY(kDefaultResolution) {}

MDIB::MDIB(MDIB& dibSrc) : MDIB() {
  if (!dibSrc.IsEmpty()) copyPixels(dibSrc, *this);
}

MDIB::~MDIB() {
  Unload();
}

void MDIB::Unload() {
  delete[] m_lpLine;
  delete[] m_lpBuf;
  m_lpLine = nullptr;
  m_lpBuf = nullptr;
  m_nWidth = 0;
  m_nHeight = 0;
  m_nBitCount = 0;
  m_nLineLength = 0;
}

int MDIB::Init(int nWidth, int nHeight, int nBitCount, int nResolution) {
  if (!InitUncleared(nWidth, nHeight, nBitCount, nResolution)) return 0;
  std::memset(m_lpBuf, 0, sizeOf(*this));
  return 1;
}

int MDIB::InitUncleared(int nWidth, int nHeight, int nBitCount, int nResolution) {
  // A failed Init leaves a size without pixels, which is nothing to reuse.
  const bool sameSize =
      m_nWidth == nWidth && m_nHeight == nHeight && m_nBitCount == nBitCount && !IsEmpty();
  if (sameSize) return 1;
  Unload();
  m_nWidth = nWidth;
  m_nHeight = nHeight;
  m_nBitCount = nBitCount;
  const int lineLength = lineLengthOf(nWidth, nBitCount);
  if (lineLength == 0 || nHeight <= 0) return 0;
  if (nHeight > PTRDIFF_MAX / lineLength) return 0;
  m_nLineLength = lineLength;

  std::unique_ptr<unsigned char[]> pixels(new (std::nothrow) unsigned char[sizeOf(*this)]);
  if (!pixels) return 0;
  const auto rowCount = static_cast<std::size_t>(nHeight);
  std::unique_ptr<unsigned char*[]> rows(new (std::nothrow) unsigned char*[rowCount]);
  if (!rows) return 0;
  m_lpBuf = pixels.release();
  m_lpLine = rows.release();
  for (std::size_t row = 0; row < rowCount; ++row) {
    m_lpLine[row] = m_lpBuf + row * static_cast<std::size_t>(lineLength);
  }
  m_nResolutionX = nResolution;
  m_nResolutionY = nResolution;
  return 1;
}

int MDIB::Copy(MDIB* srcImg) {
  // Released before the source is looked at: a copy onto itself finds nothing left to copy.
  Unload();
  return srcImg->IsEmpty() ? 0 : copyPixels(*srcImg, *this);
}

int MDIB::Rotate(MDIB* desImage, unsigned int option, double angle) {
  if (desImage) return RotateImp(*this, *desImage, option, angle);
  MDIB source;
  source.Copy(this);
  return RotateImp(source, *this, option, angle);
}

int MDIB::RotateImp(MDIB& imgsrc, MDIB& imgdst, unsigned int option, double /*angle*/) {
  switch (option) {
    case 1:
      return RotateClockWise(imgsrc, imgdst);
    case 2:
      return Rotate180(imgsrc, imgdst);
    case 3:
      return RotateAntiClockWise(imgsrc, imgdst);
    default:
      return 0;
  }
}

int MDIB::RotateClockWise(MDIB& src, MDIB& dst) {
  return turn(src, dst, src.m_nHeight, src.m_nWidth, [&] {
    transpose(bottomUp(src), topDown(dst), src.m_nWidth, src.m_nHeight, src.m_nBitCount);
  });
}

int MDIB::Rotate180(MDIB& src, MDIB& dst) {
  return turn(src, dst, src.m_nWidth, src.m_nHeight, [&] {
    mirror(bottomUp(src), topDown(dst), src.m_nWidth, src.m_nHeight, src.m_nBitCount);
  });
}

int MDIB::RotateAntiClockWise(MDIB& src, MDIB& dst) {
  return turn(src, dst, src.m_nHeight, src.m_nWidth, [&] {
    transpose(topDown(src), bottomUp(dst), src.m_nWidth, src.m_nHeight, src.m_nBitCount);
  });
}

bool MDIB::IsEmpty() const {
  return m_lpLine == nullptr || m_lpBuf == nullptr;
}
int MDIB::GetWidth() const {
  return m_nWidth;
}
int MDIB::GetHeight() const {
  return m_nHeight;
}
bool MDIB::IsTrueColor() const {
  return m_nBitCount == 24;
}
bool MDIB::IsGray() const {
  return m_nBitCount == 8;
}
bool MDIB::IsBW() const {
  return m_nBitCount == 1;
}

}  // namespace zelk
