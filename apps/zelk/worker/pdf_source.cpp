// SPDX-License-Identifier: Apache-2.0
#include "worker/pdf_source.h"

#include <FreeImage.h>
#include <fmt/format.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <new>

#include "readers/pdf_file_access.h"
#include "readers/pdf_page_pictures.h"
#include "readers/pdf_page_size.h"
#include "readers/pdf_page_text.h"
#include "readers/pdfiumreader.h"
#include "worker/memory_limit.h"
#include "worker/pdf_decryption.h"
#include "worker/pdf_text_layout.h"

namespace cli {
namespace {

constexpr int kUsualResolution = 200;

double whole_pixels(double points, int dots_per_inch) {
  constexpr double kPointsPerInch = 72.0;
  return std::floor(points * dots_per_inch / kPointsPerInch);
}

bool fits(const DocumentPages::Size& size, int dots_per_inch, std::int64_t max_pixels) {
  return whole_pixels(size.width, dots_per_inch) * whole_pixels(size.height, dots_per_inch) <=
         static_cast<double>(max_pixels);
}

// The largest resolution up to `wanted` that fits; 0 when none does.
int fitting_resolution(const DocumentPages::Size& size, int wanted, std::int64_t max_pixels) {
  if (fits(size, wanted, max_pixels)) return wanted;
  int fitting = 0;
  int too_large = wanted;
  while (too_large - fitting > 1) {
    const int middle = fitting + (too_large - fitting) / 2;
    (fits(size, middle, max_pixels) ? fitting : too_large) = middle;
  }
  return fitting;
}

bool is_white(FIBITMAP* page) {
  const unsigned bytes = FreeImage_GetLine(page);
  for (unsigned y = 0; y < FreeImage_GetHeight(page); ++y) {
    const BYTE* const row = FreeImage_GetScanLine(page, static_cast<int>(y));
    if (std::any_of(row, row + bytes, [](BYTE sample) { return sample != 255; })) return false;
  }
  return true;
}

std::string damage_of(const PdfPictureLosses& losses) {
  if (losses.has_unreadable) return "the page holds pictures that cannot be shown";
  if (losses.has_cut) return "part of a picture on the page is missing (its data has no end)";
  return "";
}

// A PDF is read from its end.
std::string refusal(const std::string& path) {
  constexpr std::streamoff kEnd = 2048;
  InputStream file(path);
  file.seekg(0, std::ios::end);
  const std::streamoff size = file.tellg();
  file.seekg(std::max<std::streamoff>(0, size - kEnd));
  const std::string end(std::istreambuf_iterator<char>(file), {});
  return end.find("%%EOF") != std::string::npos
             ? "the PDF is damaged"
             : "the PDF is damaged: the file is cut off, it does not end in %%EOF";
}

}  // namespace

void PdfSource::CloseReader::operator()(pdfiumreader* reader) const {
  reader->free_image();
  delete_reader(reader);
}

void PdfSource::open(const std::string& path) {
  _reader.reset(new pdfiumreader);
  _file = open_input(path);
  if (_file == nullptr) return;
  _access = std::make_unique<PdfFileAccess>(_file.get());
  _access->load_image(*_reader, kUsualResolution);
}

PdfSource::PdfSource(const std::string& path, const PageSettings& settings,
                     const std::string& decrypted_path)
    : _settings(settings) {
  open(path);
  if (_reader->_pdf_doc == nullptr && decrypt_pdf(path, settings.password, decrypted_path)) {
    open(decrypted_path);
  }
  if (_reader->_pdf_doc == nullptr) throw UnreadableDocument(refusal(path), false);
  if (_reader->_page_num < 1) throw UnreadableDocument("the PDF has no pages", false);
}

PdfSource::~PdfSource() = default;

int PdfSource::page_count() const {
  return _reader->_page_num;
}

DocumentPages::Size PdfSource::page_size(int index) {
  const PdfPageSize size = pdf_page_size(_reader->_pdf_doc, index);
  return {size.width, size.height};
}

PreparedPage PdfSource::prepare(int index) {
  const DocumentPages::Size size = page_size(index);
  const int wanted = _settings.dpi.value_or(kUsualResolution);
  PreparedPage page;
  page.dots_per_inch = fitting_resolution(size, wanted, _settings.max_pixels);
  if (page.dots_per_inch < 1) {
    throw UnreadablePage(
        fmt::format("the page is too large: {:.6g} x {:.6g} points have more pixels at 1 dot per "
                    "inch than --max-pixels allows ({})",
                    size.width, size.height, _settings.max_pixels));
  }
  _reader->_pdf_resolution = page.dots_per_inch;
  page.bitmap.reset(_reader->get_cur_image(index));
  if (page.bitmap == nullptr) {
    // Four bytes a pixel while it is rendered, three as the page.
    const double bytes = 7.0 * whole_pixels(size.width, page.dots_per_inch) *
                         whole_pixels(size.height, page.dots_per_inch);
    if (limit_forbids(static_cast<std::uint64_t>(bytes))) throw std::bad_alloc();
    throw UnreadablePage(size.width > 0 && size.height > 0
                             ? fmt::format("the page, {:.6g} x {:.6g} points at {} dots per inch, "
                                           "cannot be rendered",
                                           size.width, size.height, page.dots_per_inch)
                             : "the page is damaged or has no area");
  }
  page.damage =
      damage_of(pdf_picture_losses(_reader->_pdf_doc, index, is_white(page.bitmap.get())));
  if (page.dots_per_inch < wanted) {
    page.warning = fmt::format(
        "rendered at {} instead of {} dots per inch to stay within "
        "--max-pixels",
        page.dots_per_inch, wanted);
  }
  return page;
}

std::optional<PageText> PdfSource::text(int index, int dots_per_inch) {
  const DocumentPages::Size size = page_size(index);
  const double width = whole_pixels(size.width, dots_per_inch);
  const double height = whole_pixels(size.height, dots_per_inch);
  if (width < 1 || height < 1 || width > INT_MAX || height > INT_MAX) return std::nullopt;
  const int columns = static_cast<int>(width);
  const int rows = static_cast<int>(height);
  return laid_out_text(pdf_page_text(_reader->_pdf_doc, index, columns, rows), columns, rows);
}

}  // namespace cli
