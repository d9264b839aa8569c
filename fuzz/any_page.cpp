// SPDX-License-Identifier: Apache-2.0
#include "any_page.h"

#include "support/Documents.h"
#include "writers/page_jpeg.h"

std::vector<OCR_CHAR> any_characters(FuzzInput& input) {
  std::vector<OCR_CHAR> characters(static_cast<std::size_t>(input.below(12)));
  for (OCR_CHAR& one : characters) {
    const bool is_small = input.below(4) != 0;
    for (std::int64_t* edge : {&one.left, &one.top, &one.right, &one.bottom}) {
      *edge = is_small ? input.number<std::int8_t>() : input.number<std::int64_t>();
    }
    one.code = input.number<std::uint16_t>();
  }
  return characters;
}

OwnedBitmap any_bitmap(FuzzInput& input) {
  const auto width = static_cast<unsigned>(1 + input.below(20));
  FIBITMAP* const dib = make_bitmap(width, static_cast<unsigned>(1 + input.below(20)));
  const std::string_view bytes = input.text(64);
  std::memcpy(FreeImage_GetBits(dib), bytes.data(),
              std::min<std::size_t>(bytes.size(), FreeImage_GetPitch(dib)));
  FreeImage_SetDotsPerMeterX(dib, input.number<std::uint32_t>());
  FreeImage_SetDotsPerMeterY(dib, input.number<std::uint32_t>());
  return OwnedBitmap(dib, &FreeImage_Unload);
}

PagePicture any_picture(FuzzInput& input, FIBITMAP* dib) {
  PagePicture picture{encode_page_jpeg(dib), input.number<std::int32_t>(),
                      input.number<std::int32_t>(), input.number<std::uint32_t>()};
  // The headers alone take more.
  if (input.below(4) == 0) picture.jpeg.resize(static_cast<std::size_t>(input.below(100)));
  return picture;
}
