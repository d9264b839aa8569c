// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/document.h"

#include <algorithm>
#include <cmath>

#include "pdfproducer/error.h"
#include "pdfproducer/number_text.h"

namespace zelk::pdf {

namespace {

constexpr double kPointsPerInch = 72;
constexpr int kLengthDecimals = 4;
constexpr double kShortest = 1e-4;  // points; less would be written as 0
constexpr double kLongest = 1e7;

// Readers give up a whole file over one number that they cannot hold.
QPDFObjectHandle length(double points) {
  const double kept = std::clamp(points, kShortest, kLongest);
  return QPDFObjectHandle::newReal(number_text(kept, kLengthDecimals));
}

QPDFObjectHandle page_box(double width, double height) {
  return QPDFObjectHandle::newArray(std::vector{QPDFObjectHandle::newInteger(0),
                                                QPDFObjectHandle::newInteger(0), length(width),
                                                length(height)});
}

const char* color_space(int components) {
  if (components == 1) return "/DeviceGray";
  return components == 3 ? "/DeviceRGB" : "/DeviceCMYK";
}

void require(bool valid, const char* what) {
  if (!valid) throw Error(ErrorNumber::kArgument, what);
}

}  // namespace

int Document::load_font() {
  if (!_has_font) _decoder = std::make_unique<GbkDecoder>();
  _has_font = true;
  return 0;
}

void Document::begin_page(double width, double height) {
  require(std::isfinite(width) && std::isfinite(height) && width >= 0 && height >= 0,
          "a page's size is not negative");
  drop_page();
  _page = std::make_unique<Page>();
  _page->width = width;
  _page->height = height;
}

void Document::drop_page() {
  if (!_page) return;
  for (auto& image : _images) {
    const bool opened = std::any_of(_page->opened.begin(), _page->opened.end(),
                                    [&](const auto& other) { return other.lock() == image; });
    if (opened) image.reset();
  }
  _page.reset();
}

void Document::set_fill_color(double red, double green, double blue) {
  for (const double component : {red, green, blue}) {
    require(component >= 0 && component <= 1, "a colour component lies between 0 and 1");
  }
  _page->content.set_fill_color(red, green, blue);
}

void Document::set_font(int font, double size) {
  require(_has_font && font == 0, "there is no font with this handle");
  require(std::isfinite(size) && size > 0, "a font's size is positive");
  _page->content.set_size(size);
  _page->has_font = true;
}

void Document::show(std::string_view text, double x, double y) {
  require(std::isfinite(x) && std::isfinite(y), "a place on the page is a finite number");
  if (!_page->has_font) throw Error(ErrorNumber::kScope, "no font has been set on this page");
  _page->content.move_to(x, y);
  for (const GbkCharacter& character : _decoder->decode(text)) {
    _page->content.show(character);
    _page->used.add(character);
  }
}

int Document::open_image(std::string_view jpeg) {
  auto image = std::make_shared<Image>();
  image->header = read_jpeg_header(jpeg);
  image->jpeg = jpeg;
  auto slot = std::find(_images.begin(), _images.end(), nullptr);
  if (slot == _images.end()) slot = _images.insert(slot, nullptr);
  if (_page) _page->opened.push_back(image);
  *slot = std::move(image);
  return static_cast<int>(slot - _images.begin());
}

std::shared_ptr<Document::Image>& Document::image_at(int handle) {
  const auto index = static_cast<std::size_t>(handle);
  require(handle >= 0 && index < _images.size() && _images[index] != nullptr,
          "there is no open image with this handle");
  return _images[index];
}

void Document::close_image(int image) {
  image_at(image).reset();
}

void Document::fit_image(int image, double x, double y) {
  const std::shared_ptr<Image>& placed = image_at(image);
  const JpegHeader& header = placed->header;
  const double width = header.width * kPointsPerInch / header.dots_per_inch_x;
  const double height = header.height * kPointsPerInch / header.dots_per_inch_y;
  require(std::isfinite(x) && std::isfinite(y) && x + width > 0 && y + height > 0,
          "the image lies outside any page");
  const std::string name = "/I" + std::to_string(_page->images.size());
  _page->images.push_back(placed);
  _page->content.paint_image(name, x, y, width, height);
  _page->width = x + width;
  _page->height = y + height;
}

void Document::write_image(Image& image) {
  if (image.number != 0) return;
  const JpegHeader& header = image.header;
  auto dictionary = QPDFObjectHandle::parse(
      "<< /Type /XObject /Subtype /Image /BitsPerComponent 8 /Filter /DCTDecode >>");
  dictionary.replaceKey("/Width", QPDFObjectHandle::newInteger(header.width));
  dictionary.replaceKey("/Height", QPDFObjectHandle::newInteger(header.height));
  dictionary.replaceKey("/ColorSpace", QPDFObjectHandle::newName(color_space(header.components)));
  if (header.inverted) {
    dictionary.replaceKey("/Decode", QPDFObjectHandle::parse("[1 0 1 0 1 0 1 0]"));
  }
  const int number = _file.reserve();
  _file.add_stream(number, dictionary, image.jpeg, Coding::kAsIs);
  image.number = number;
  image.jpeg = std::string();
}

QPDFObjectHandle Document::resources(const Page& page) {
  auto result = QPDFObjectHandle::newDictionary();
  if (!page.used.empty()) {
    if (_fonts == 0) _fonts = _file.reserve();
    result.replaceKey("/Font", ObjectFile::reference(_fonts));
  }
  if (page.images.empty()) return result;
  auto images = QPDFObjectHandle::newDictionary();
  for (std::size_t i = 0; i < page.images.size(); ++i) {
    images.replaceKey("/I" + std::to_string(i), ObjectFile::reference(page.images[i]->number));
  }
  result.replaceKey("/XObject", images);
  return result;
}

void Document::end_page() {
  Page& page = *_page;
  if (page.width == 0 || page.height == 0) {
    throw Error(ErrorNumber::kArgument, "the page has no size");
  }
  for (const auto& image : page.images) write_image(*image);
  const int content = _file.reserve();
  _file.add_stream(content, QPDFObjectHandle::newDictionary(), page.content.finish(),
                   Coding::kDeflate);
  const int number = _file.reserve();
  auto dictionary = QPDFObjectHandle::parse("<< /Type /Page >>");
  dictionary.replaceKey("/Parent", ObjectFile::reference(_pages.add(number)));
  dictionary.replaceKey("/MediaBox", page_box(page.width, page.height));
  dictionary.replaceKey("/Resources", resources(page));
  dictionary.replaceKey("/Contents", ObjectFile::reference(content));
  _file.add(number, dictionary);
  _used.add(page.used);
  _page.reset();
}

void Document::finish() {
  drop_page();
  if (_fonts != 0) TextFont::write(_file, _fonts, _used);
  auto catalog = QPDFObjectHandle::parse("<< /Type /Catalog >>");
  catalog.replaceKey("/Pages", ObjectFile::reference(_pages.finish()));
  auto information = QPDFObjectHandle::newDictionary();
  information.replaceKey("/Producer", QPDFObjectHandle::newUnicodeString("zelk " ZELK_VERSION));
  information.replaceKey("/Creator", QPDFObjectHandle::newUnicodeString("zelk"));
  const int catalog_number = _file.reserve();
  const int information_number = _file.reserve();
  _file.add(catalog_number, catalog);
  _file.add(information_number, information);
  _file.finish(catalog_number, information_number);
}

}  // namespace zelk::pdf
