// SPDX-License-Identifier: Apache-2.0
// Rasters of all kinds. What is read on them does not count: the engine may refuse them, but it
// must come back, and neither write to them nor read behind their end.
#include <fmt/format.h>

#include "check.h"
#include "session.h"

namespace engine_check {
namespace {

constexpr int kDepths[] = {1, 8, 24};

void read_in_all_depths(const Subject& subject, Verdict& verdict, const GreyPage& page) {
  Session session(subject);
  std::string codes;
  for (const int bits : kDepths) {
    const GuardedRaster raster(page, bits);
    const int accepted = session.set(raster);
    const int read = session.recognize();
    session.results(read);
    codes += fmt::format(" {}/{}", accepted, read);
  }
  verdict.note("codes" + codes);
}

template <int Width, int Height>
void of_size(const Subject& subject, Verdict& verdict) {
  read_in_all_depths(subject, verdict, uniform_page(Width, Height, 255));
}

template <int Grey>
void of_grey(const Subject& subject, Verdict& verdict) {
  read_in_all_depths(subject, verdict, uniform_page(1001, 700, Grey));
}

void of_noise(const Subject& subject, Verdict& verdict) {
  read_in_all_depths(subject, verdict, noise_page(601, 400));
}

void of_text(const Subject& subject, Verdict& verdict) {
  read_in_all_depths(subject, verdict, subject.page);
}

void padding(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  for (const int bits : kDepths) {
    const Reading clean = session.read(GuardedRaster(subject.page, bits, Padding::kZero, true));
    const Reading noisy = session.read(GuardedRaster(subject.page, bits, Padding::kNoise, true));
    if (!same_content(clean, noisy)) verdict.fail(fmt::format("another result at {} bits", bits));
  }
  verdict.note("the same result at 1, 8 and 24 bits");
}

void withdrawn(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  GuardedRaster raster(subject.page, 24);
  session.set(raster);
  const int code = session.recognize();
  raster.withdraw();
  session.results(code);
  verdict.note("results without it");
}

constexpr Check kChecks[] = {
    {"rasters.0x0", "a return", of_size<0, 0>},
    {"rasters.1x1", "a return", of_size<1, 1>},
    {"rasters.1x40000", "a return", of_size<1, 40000>},
    {"rasters.40000x1", "a return", of_size<40000, 1>},
    {"rasters.white", "a return", of_grey<255>},
    {"rasters.black", "a return", of_grey<0>},
    {"rasters.noise", "a return", of_noise},
    {"rasters.text", "a return", of_text},
    {"rasters.padding", "the same result whatever lies behind a row's last pixel", padding},
    {"rasters.withdrawn", "results that do not need the raster any more", withdrawn},
};

}  // namespace

std::span<const Check> raster_checks() {
  return kChecks;
}

}  // namespace engine_check
