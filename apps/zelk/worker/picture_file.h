// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_FILE_H
#define ZELK_APPS_WORKER_PICTURE_FILE_H

#include <optional>
#include <string>
#include <vector>

#include "worker/bmp_header.h"
#include "worker/document_pages.h"
#include "worker/input_file.h"
#include "worker/picture_header.h"
#include "worker/tiff_tags.h"

namespace cli {

// The pictures of one file as FreeImage decodes them: any number in a TIFF, else one.
class PictureFile {
 public:
  // `format` is FreeImage's number. Throws UnreadableDocument.
  PictureFile(const std::string& path, int format);

  int picture_count() const { return _picture_count; }

  // Both throw UnreadablePage for a picture that cannot be decoded. The bitmap of decode is as
  // prepared_picture makes it. `damage` is told when some of its pixels are missing or wrong: what
  // is, for people.
  PictureHeader header(int index) const;
  PageBitmap decode(int index, const PictureHeader& header, std::string& damage) const;

 private:
  [[noreturn]] void fail_to_decode(const PictureHeader& header) const;
  PictureHeader plain_header() const;
  PictureHeader tiff_header(const TiffTags& tags) const;
  PageBitmap decode_plain(const PictureHeader& header, std::string& damage) const;
  PageBitmap decode_tiff(const TiffTags& tags, PictureHeader header) const;
  PictureStream stream() const;
  PictureStream stream(const TiffTags& tags) const;

  const std::string _path;
  const int _format;
  int _picture_count = 1;
  std::vector<TiffTags> _tags;    // TIFF only, one for each picture
  std::optional<BmpHeader> _bmp;  // BMP only, where FreeImage cannot read the file's own header
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_FILE_H
