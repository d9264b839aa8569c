// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/Producer.h"

#include <cmath>
#include <cstdlib>
#include <memory>

#include "support/Documents.h"
#include "text/StringFormat.h"

bool add_page(Producer& producer, const std::vector<Shown>& text, const std::string& jpeg) {
  if (producer.load_font() != 0 || !producer.begin_page()) return false;
  const auto black = [&] { producer.api.PDF_setcolor(producer.p, "fill", "rgb", 0, 0, 0, 0); };
  if (!producer.runs(black)) return false;
  for (const Shown& shown : text) {
    if (!producer.set_font(shown.size)) return false;
    if (!producer.show(to_gbk(shown.utf8), shown.x, shown.y)) return false;
  }
  return producer.open_image(jpeg) == 0 && producer.fit_image(0) && producer.close_image(0) &&
         producer.end_page();
}

bool write_document(const std::string& path, const std::vector<Shown>& text,
                    const std::string& jpeg) {
  Producer producer;
  return producer.begin(path) == 0 && add_page(producer, text, jpeg) && producer.end();
}

std::vector<Shown> line_of(const std::string& utf8, double x, double y, double size) {
  std::vector<Shown> line;
  for (const std::string& character : characters_of(utf8)) {
    line.push_back({character, x, y, size});
    x += character.size() == 1 ? size / 2 : size;
  }
  return line;
}

std::string to_gbk(const std::string& utf8) {
  const std::unique_ptr<char, decltype(&std::free)> gbk(UTF8toANSI(utf8), std::free);
  return gbk.get();
}

std::string to_utf8(char32_t code) {
  return qv::StringFormat::wstrtostr(std::wstring(1, static_cast<wchar_t>(code)));
}

std::vector<std::string> characters_of(const std::string& utf8) {
  std::vector<std::string> characters;
  for (const char byte : utf8) {
    const bool continues = (byte & 0xC0) == 0x80;
    if (!continues) characters.emplace_back();
    characters.back().push_back(byte);
  }
  return characters;
}

std::string encoded(FIBITMAP* dib) {
  FIMEMORY* const memory = FreeImage_OpenMemory(nullptr, 0);
  FreeImage_SaveToMemory(FIF_JPEG, dib, memory, 0);
  BYTE* bytes = nullptr;
  DWORD size = 0;
  FreeImage_AcquireMemory(memory, &bytes, &size);
  std::string jpeg(reinterpret_cast<const char*>(bytes), size);
  FreeImage_CloseMemory(memory);
  FreeImage_Unload(dib);
  return jpeg;
}

std::string make_jpeg(unsigned width, unsigned height, unsigned dots_per_inch, bool grey) {
  FIBITMAP* dib = make_bitmap(width, height);
  if (grey) {
    FIBITMAP* const converted = FreeImage_ConvertToGreyscale(dib);
    FreeImage_Unload(dib);
    dib = converted;
  }
  const auto dots_per_metre = static_cast<unsigned>(std::lround(dots_per_inch / 0.0254));
  FreeImage_SetDotsPerMeterX(dib, dots_per_metre);
  FreeImage_SetDotsPerMeterY(dib, dots_per_metre);
  return encoded(dib);
}
