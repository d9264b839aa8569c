// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_PDFPRODUCER_OUTPUT_FILE_H
#define ZELK_PDFPRODUCER_OUTPUT_FILE_H

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace zelk::pdf {

// A file that appears under its name when it is complete, and not before.
//
// It is written beside its place, in the same folder, and takes the mode and the owner of the file
// that it will replace, or those of any new file. Symbolic links are followed: what the last one
// names is replaced. Failures are thrown as Error (kOutput) and name the file as the caller did.
class OutputFile {
 public:
  // Refused besides what the system refuses: an empty name, a file that may not be written to, and
  // anything that is not a plain file.
  explicit OutputFile(const std::string& name);
  // Without commit, nothing remains.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(std::string_view bytes);
  // Bytes written so far.
  std::uint64_t size() const { return _size; }
  // Brings everything to the disk and puts the file in its place.
  void commit();

 private:
  bool find_earlier(struct stat& earlier) const;
  void open_beside_target();
  bool take_over(const struct stat& earlier) const;
  void write_to_disk(std::string_view bytes);
  void flush();
  void discard() noexcept;
  [[noreturn]] void fail(const char* verb, int reason) const;

  std::string _name;
  std::filesystem::path _target;
  std::filesystem::path _temporary;
  int _descriptor = -1;
  std::uint64_t _size = 0;
  std::string _buffer;
};

}  // namespace zelk::pdf

#endif  // ZELK_PDFPRODUCER_OUTPUT_FILE_H
