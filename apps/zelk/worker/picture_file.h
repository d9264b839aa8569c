// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_WORKER_PICTURE_FILE_H
#define ZELK_APPS_WORKER_PICTURE_FILE_H

#include <string>
#include <vector>

#include "worker/document_pages.h"
#include "worker/input_file.h"
#include "worker/picture_header.h"
#include "worker/tiff_tags.h"

struct FIMULTIBITMAP;

namespace cli {

// The pictures of one file as FreeImage decodes them: any number in a TIFF, else one.
class PictureFile {
 public:
  // `format` is FreeImage's number. Throws UnreadableDocument.
  PictureFile(const std::string& path, int format);
  ~PictureFile();
  PictureFile(const PictureFile&) = delete;
  PictureFile& operator=(const PictureFile&) = delete;

  int picture_count() const { return _picture_count; }

  // Both throw UnreadablePage for a picture that cannot be decoded. The
  // bitmap of decode is as prepared_picture makes it.
  PictureHeader header(int index);
  PageBitmap decode(int index, const PictureHeader& header);

 private:
  PictureHeader tiff_header(int index);

  const std::string _path;
  const int _format;
  int _picture_count = 1;
  // TIFF only: the file opened for headers, opened for pictures, and what FreeImage does not tell.
  InputFile _headers_file;
  InputFile _pictures_file;
  FIMULTIBITMAP* _headers = nullptr;
  FIMULTIBITMAP* _pictures = nullptr;
  std::vector<TiffTags> _tags;
};

}  // namespace cli

#endif  // ZELK_APPS_WORKER_PICTURE_FILE_H
