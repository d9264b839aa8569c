// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_READERS_TIFF_DIRECTORIES_H
#define ZELK_READERS_TIFF_DIRECTORIES_H

#include <string>
#include <vector>

// The directories of a TIFF file, read in one pass without decoding any picture.
class TiffDirectories {
 public:
  // Opens the file; whatever is at the path later, this is the file that is read.
  explicit TiffDirectories(const std::string& path);
  ~TiffDirectories();
  TiffDirectories(const TiffDirectories&) = delete;
  TiffDirectories& operator=(const TiffDirectories&) = delete;

  // True when the path leads to the file that was opened.
  bool is_file_at(const std::string& path) const;

  // Of each page, whether FreeImage may be asked for it: its picture is within the limit of
  // page_limit.h, and so are the thumbnails that FreeImage decodes with it, unasked and even when
  // it is asked for the header alone. Ends where the chain of directories breaks; empty for what
  // is not a TIFF file.
  std::vector<bool> decodable_pages() const;

 private:
  const int _descriptor;
};

#endif  // ZELK_READERS_TIFF_DIRECTORIES_H
