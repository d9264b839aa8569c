// SPDX-License-Identifier: Apache-2.0
#include "session.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace engine_check {
namespace {

constexpr int kMostLines = 1 << 20;
constexpr int kMostCharacters = 1 << 20;
constexpr std::size_t kJsonCapacity = 4096000;

bool same_characters(const std::vector<OCR_CHAR>& a, const std::vector<OCR_CHAR>& b) {
  return std::equal(
      a.begin(), a.end(), b.begin(), b.end(), [](const OCR_CHAR& one, const OCR_CHAR& other) {
        return one.left == other.left && one.top == other.top && one.right == other.right &&
               one.bottom == other.bottom && one.code == other.code;
      });
}

}  // namespace

bool Reading::is_blank() const {
  const bool no_characters =
      std::all_of(lines.begin(), lines.end(), [](const auto& line) { return line.empty(); });
  return no_characters && text.find_first_not_of(" \t\r\n\f") == std::string::npos;
}

bool same_content(const Reading& a, const Reading& b) {
  return a.code == b.code && a.text == b.text && a.wide == b.wide &&
         std::equal(a.lines.begin(), a.lines.end(), b.lines.begin(), b.lines.end(),
                    same_characters);
}

Session::Session(const Subject& subject) {
  const int code = engine_.init_engine(subject.directory.c_str());
  if (code != 0) throw NotStarted(fmt::format("the engine does not start ({})", code));
}

int Session::set(const GuardedRaster& raster) {
  constexpr int kPrepareImage = 1;  // as the library asks
  return engine_.set_image_data(raster.rows(), raster.width(), raster.height(), raster.bits(),
                                raster.line_bytes(), kPrepareImage);
}

std::vector<OCR_CHAR> Session::line(int id) {
  int count = 0;
  engine_.get_line_info_ex(id, nullptr, count);
  if (count <= 0 || count > kMostCharacters) return {};
  std::vector<OCR_CHAR> characters(static_cast<std::size_t>(count));
  int filled = 0;
  engine_.get_line_info_ex(id, characters.data(), filled);
  characters.resize(static_cast<std::size_t>(std::clamp(filled, 0, count)));
  return characters;
}

std::string Session::json(std::size_t capacity) {
  std::vector<char> buffer(capacity, '\0');
  engine_.get_result_json(buffer.data(), static_cast<int>(capacity));
  return {buffer.data(), strnlen(buffer.data(), capacity)};
}

Reading Session::results(int code) {
  Reading reading;
  reading.code = code;
  const int count = engine_.get_lines_num();
  for (int id = 0; count <= kMostLines && id < count; ++id) reading.lines.push_back(line(id));
  const char* const text = engine_.get_result_ex();
  if (text != nullptr) reading.text = text;
  const wchar_t* const wide = engine_.get_result_unicode();
  if (wide != nullptr) reading.wide = wide;
  reading.complete = text != nullptr && wide != nullptr;
  if (code == 0) reading.json = json(kJsonCapacity);
  return reading;
}

int Session::set_and_recognize(const GreyPage& page) {
  const GuardedRaster raster(page, 24);
  set(raster);
  return recognize();
}

Reading Session::read(const GuardedRaster& raster) {
  set(raster);
  return results(recognize());
}

Reading Session::read(const GreyPage& page) {
  return read(GuardedRaster(page, 24));
}

}  // namespace engine_check
