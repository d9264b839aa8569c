// SPDX-License-Identifier: Apache-2.0
// Sequences of Init, Copy, Rotate and writing over three rasters, each compared with a plain model.
#include <climits>

#include "fuzz_input.h"
#include "image/MDIB.h"
#include "raster_model.h"

namespace {

constexpr int kRasters = 3;
constexpr char kAgree[] = "success is told as it is";

// One operation on raster `to`, with another one as its source. The results must agree.
void step(FuzzInput& input, zelk::MDIB* dibs, RasterModel* models, int to) {
  constexpr int kBits[] = {1, 8, 24, 0, 2, 16, 32, -1};
  const int other = input.below(kRasters);
  const auto option = static_cast<unsigned>(input.below(5));
  switch (input.below(6)) {
    case 0: {
      const int width = input.below(64) == 0 ? INT_MAX : any_side(input);
      const int height = any_side(input);
      const int bits = kBits[width == INT_MAX ? 1 + input.below(2) : input.below(8)];
      const int dots = input.number<std::int32_t>();
      const bool made = dibs[to].Init(width, height, bits, dots) == 1;
      return require(made == models[to].init(width, height, bits, dots), kAgree);
    }
    case 1:
      return require((dibs[to].Copy(&dibs[other]) == 1) == models[to].copy(&models[other]), kAgree);
    case 2:
      return require((dibs[other].Rotate(&dibs[to], option, 0.5) == 1) ==
                         models[to].turn_from(models[other], option),
                     kAgree);
    case 3:
      return require((dibs[to].Rotate(nullptr, option, 0) == 1) == models[to].turn_in_place(option),
                     kAgree);
    case 4:
      dibs[to].Unload();
      return models[to].unload();
    default:
      return draw(input, dibs[to], models[to]);
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  zelk::MDIB dibs[kRasters];
  RasterModel models[kRasters];
  for (int steps = 0; steps < 24 && !input.empty(); ++steps) {
    const int to = input.below(kRasters);
    step(input, dibs, models, to);
    compare(dibs[to], models[to]);
  }
  return 0;
}
