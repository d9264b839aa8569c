// SPDX-License-Identifier: Apache-2.0
#include "readers/tiff_directories.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <tiffio.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "readers/page_limit.h"
#include "readers/quiet_libtiff.h"

namespace {

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

// Null for what is not a TIFF file.
Tiff open_tiff(int file) {
  const int descriptor = fcntl(file, F_DUPFD_CLOEXEC, 0);
  if (descriptor == -1) return nullptr;
  lseek(descriptor, 0, SEEK_SET);
  // Not mapped into memory: a file that is cut meanwhile would end the process.
  Tiff tiff(TIFFFdOpen(descriptor, "", "rm"));
  if (tiff == nullptr) close(descriptor);
  return tiff;
}

bool picture_may_be_decoded(TIFF* tiff) {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
  TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
  return may_be_decoded(width, height);
}

// Where the directory of the current one's thumbnail is.
std::optional<std::uint64_t> thumbnail(TIFF* tiff) {
  std::uint16_t count = 0;
  std::uint64_t* places = nullptr;
  if (TIFFGetField(tiff, TIFFTAG_SUBIFD, &count, &places) == 0 || count == 0) return {};
  return places[0];
}

// FreeImage decodes the thumbnail of a picture, the thumbnail's thumbnail, and so on, each within
// the call for the one before: a long chain would exhaust the stack.
bool thumbnails_may_be_decoded(TIFF* tiff, std::optional<std::uint64_t> place) {
  constexpr int kLongestChain = 8;
  for (int i = 0; i < kLongestChain; ++i) {
    if (!place || TIFFSetSubDirectory(tiff, *place) == 0) return true;
    if (!picture_may_be_decoded(tiff)) return false;
    place = thumbnail(tiff);
  }
  return false;
}

}  // namespace

TiffDirectories::TiffDirectories(const std::string& path)
    : _descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}

TiffDirectories::~TiffDirectories() {
  if (_descriptor != -1) close(_descriptor);
}

bool TiffDirectories::is_file_at(const std::string& path) const {
  struct stat opened {};
  struct stat there {};
  return fstat(_descriptor, &opened) == 0 && stat(path.c_str(), &there) == 0 &&
         opened.st_dev == there.st_dev && opened.st_ino == there.st_ino;
}

std::vector<bool> TiffDirectories::decodable_pages() const {
  const QuietLibtiff quiet;
  std::vector<bool> pages;
  const Tiff chain = open_tiff(_descriptor);
  // Thumbnails are followed apart from the chain, which would have to be walked again afterwards.
  const Tiff aside = open_tiff(_descriptor);
  if (chain == nullptr || aside == nullptr) return pages;
  do {
    pages.push_back(picture_may_be_decoded(chain.get()) &&
                    thumbnails_may_be_decoded(aside.get(), thumbnail(chain.get())));
  } while (TIFFReadDirectory(chain.get()) == 1);
  return pages;
}
