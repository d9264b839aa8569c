// SPDX-License-Identifier: Apache-2.0
#include "image/pixel_rows.h"

#include <tmmintrin.h>

#include <cstring>

namespace zelk {

namespace {

constexpr std::size_t kStep = 16;  // pixels

// Copies as many whole steps as fit and returns the number of pixels copied.
[[gnu::target("ssse3")]] std::size_t bgra_to_bgr_by_steps(unsigned char* destination,
                                                          const unsigned char* source,
                                                          std::size_t pixels) {
  const std::size_t copied = pixels - pixels % kStep;
  // The colour bytes of four pixels move together, four zeros behind them.
  const __m128i pack = _mm_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -1, -1, -1, -1);
  for (std::size_t done = 0; done < copied; done += kStep, source += 64, destination += 48) {
    const auto* const in = reinterpret_cast<const __m128i*>(source);
    const __m128i a = _mm_shuffle_epi8(_mm_loadu_si128(in), pack);
    const __m128i b = _mm_shuffle_epi8(_mm_loadu_si128(in + 1), pack);
    const __m128i c = _mm_shuffle_epi8(_mm_loadu_si128(in + 2), pack);
    const __m128i d = _mm_shuffle_epi8(_mm_loadu_si128(in + 3), pack);
    auto* const out = reinterpret_cast<__m128i*>(destination);
    _mm_storeu_si128(out, _mm_or_si128(a, _mm_slli_si128(b, 12)));
    _mm_storeu_si128(out + 1, _mm_or_si128(_mm_srli_si128(b, 4), _mm_slli_si128(c, 8)));
    _mm_storeu_si128(out + 2, _mm_or_si128(_mm_srli_si128(c, 8), _mm_slli_si128(d, 4)));
  }
  return copied;
}

void bgra_to_bgr(unsigned char* destination, const unsigned char* source, std::size_t pixels) {
  std::size_t done = 0;
  if (__builtin_cpu_supports("ssse3")) done = bgra_to_bgr_by_steps(destination, source, pixels);
  for (; done < pixels; ++done) std::memcpy(destination + 3 * done, source + 4 * done, 3);
}

}  // namespace

void copy_flipped_without_alpha(unsigned char* destination, std::size_t destination_pitch,
                                const unsigned char* source, std::size_t source_pitch,
                                std::size_t width, std::size_t rows) {
  copy_rows_flipped(destination, destination_pitch, source, source_pitch, rows,
                    [width](unsigned char* row, const unsigned char* source_row) {
                      bgra_to_bgr(row, source_row, width);
                    });
}

}  // namespace zelk
