// SPDX-License-Identifier: Apache-2.0
// The three turns of an A4 page at 300 dots per inch against Leptonica's, each in its own layout:
// 24 bits here meet 32 there. Both make their destination anew each time and release it.
#include <allheaders.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <stdexcept>

#include "image/MDIB.h"
#include "side_by_side.h"

namespace {

constexpr int kWidth = 2480;
constexpr int kHeight = 3508;

enum Turn : unsigned { kClockwise = 1, kHalf = 2, kAnticlockwise = 3 };

// Text lines on white paper: four in 13 blocks of 4 by 6 pixels are black inside the lines.
bool isBlack(int x, int y) {
  const unsigned block =
      static_cast<unsigned>(x / 4) * 2654435761U ^ static_cast<unsigned>(y / 6) * 40503U;
  return y % 60 < 36 && x > 240 && x < 2240 && (block >> 7) % 13 < 4;
}

void fill(zelk::MDIB& page, PIX* reference) {
  std::mt19937 noise{7};
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const bool black = isBlack(x, y);
      const auto level = static_cast<unsigned>((black ? 20 : 230) + noise() % 20);
      unsigned char* const row = page.m_lpLine[y];
      if (page.m_nBitCount == 1) {
        if (black) row[x / 8] = static_cast<unsigned char>(row[x / 8] | 0x80 >> x % 8);
        pixSetPixel(reference, x, y, black);
      } else if (page.m_nBitCount == 8) {
        row[x] = static_cast<unsigned char>(level);
        pixSetPixel(reference, x, y, level);
      } else {
        for (int k = 0; k < 3; ++k) row[3 * x + k] = static_cast<unsigned char>(level);
        pixSetPixel(reference, x, y, level << 24 | level << 16 | level << 8);
      }
    }
  }
}

PIX* turnedByLeptonica(PIX* page, Turn turn) {
  return turn == kHalf ? pixRotate180(nullptr, page)
                       : pixRotate90(page, turn == kClockwise ? 1 : -1);
}

void rotate(benchmark::State& state, int bitCount, Turn turn) {
  zelk::MDIB page;
  page.Init(kWidth, kHeight, bitCount, 300);
  PIX* reference = pixCreate(kWidth, kHeight, bitCount == 24 ? 32 : bitCount);
  fill(page, reference);
  bench::sideBySide(
      state,
      [&] {
        zelk::MDIB turned;
        page.Rotate(&turned, turn, 0);
        benchmark::DoNotOptimize(turned.m_lpBuf[0]);
      },
      [&] {
        PIX* turned = turnedByLeptonica(reference, turn);
        benchmark::DoNotOptimize(pixGetData(turned)[0]);
        pixDestroy(&turned);
      });
  pixDestroy(&reference);
}

}  // namespace

#define ZELK_ROTATION_BENCHMARK(name, ...) \
  BENCHMARK_CAPTURE(rotate, name, __VA_ARGS__)->UseManualTime()->Unit(benchmark::kMillisecond)
ZELK_ROTATION_BENCHMARK(clockwise_1_bit, 1, kClockwise);
ZELK_ROTATION_BENCHMARK(half_1_bit, 1, kHalf);
ZELK_ROTATION_BENCHMARK(anticlockwise_1_bit, 1, kAnticlockwise);
ZELK_ROTATION_BENCHMARK(clockwise_8_bits, 8, kClockwise);
ZELK_ROTATION_BENCHMARK(half_8_bits, 8, kHalf);
ZELK_ROTATION_BENCHMARK(anticlockwise_8_bits, 8, kAnticlockwise);
ZELK_ROTATION_BENCHMARK(clockwise_24_bits, 24, kClockwise);
ZELK_ROTATION_BENCHMARK(half_24_bits, 24, kHalf);
ZELK_ROTATION_BENCHMARK(anticlockwise_24_bits, 24, kAnticlockwise);
#undef ZELK_ROTATION_BENCHMARK
