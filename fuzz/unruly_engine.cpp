// SPDX-License-Identifier: Apache-2.0
#include "unruly_engine.h"

#include <climits>
#include <cstring>

namespace {

UnrulyEngine engine;

constexpr int kMostLines = 1 << 20;
constexpr std::size_t kMostCharacters = 1 << 20;

// Small counts mostly; else those at which something changes, or anything. Counts that make the
// caller take memory for a million characters are rare: each takes many milliseconds.
int any_count(FuzzInput& input) {
  constexpr int kTelling[] = {-1, INT_MIN, INT_MAX, INT_MAX / 40, kMostLines + 1};
  constexpr int kLarge[] = {kMostLines, kMostLines / 2, kMostLines - 1024};
  const int choice = input.below(256);
  if (choice == 137) return kLarge[input.below(3)];
  if (choice < 224) return choice % 8;
  if (choice < 248) return kTelling[choice % 5];
  const auto count = input.number<std::int32_t>();
  return count > 0 && count <= kMostLines ? count % 1024 : count;
}

std::int64_t any_edge(FuzzInput& input) {
  constexpr std::int64_t kTelling[] = {INT64_MIN, INT64_MAX, 0, -1};
  const int choice = input.below(256);
  return choice < 4 ? kTelling[choice] : choice < 200 ? choice : input.number<std::int64_t>();
}

int set_image_data(const unsigned char* bytes, int, int height, int, int line_bytes, int) {
  unsigned sum = 0;  // reads all that was given
  for (int i = 0; i < height * line_bytes; ++i) sum += bytes[i];
  return static_cast<int>(sum % 2);
}

int recognize() {
  engine.believed.emplace_back();
  engine.jsons.emplace_back();
  return engine.input->below(4) == 0 ? engine.input->number<std::int32_t>() : 0;
}

int lines_num() {
  engine.lines = any_count(*engine.input);
  // A page of a million lines takes a million questions.
  if (engine.lines > 4096 && engine.lines <= kMostLines) engine.lines = 4096;
  return engine.lines;
}

void fill(OCR_CHAR* characters, int count) {
  FuzzInput& input = *engine.input;
  for (int i = 0; i < count && !input.empty(); ++i) {
    characters[i] = {any_edge(input),
                     any_edge(input),
                     any_edge(input),
                     any_edge(input),
                     input.number<std::uint16_t>(),
                     {}};
  }
}

bool line_info(int id, OCR_CHAR* characters, int& count) {
  require(id >= 0 && id < engine.lines && engine.lines <= kMostLines, "lines are those told");
  std::vector<OCR_CHAR>& believed = engine.believed.back();
  if (characters == nullptr) {
    require(count == 0, "the count is 0 before the first step");
    require(!engine.is_due, "a line with characters is asked for them");
    count = engine.line_count = any_count(*engine.input);
    const std::int64_t all = static_cast<std::int64_t>(believed.size()) + count;
    engine.is_due = count > 0 && all <= std::int64_t{kMostCharacters};
    return engine.input->below(2) == 0;
  }
  require(engine.line_count > 0, "no array is made for no characters");
  require(believed.size() + static_cast<std::size_t>(engine.line_count) <= kMostCharacters,
          "no array is made for what a page cannot hold");
  engine.is_due = false;
  fill(characters, engine.line_count);
  count = engine.input->below(2) == 0 ? engine.line_count : any_count(*engine.input);
  if (count > 0 && count <= engine.line_count) {
    believed.insert(believed.end(), characters, characters + count);
  }
  return engine.input->below(2) == 0;
}

const char* result_ex() {
  require(!engine.is_due, "a line with characters is asked for them");
  if (engine.input->below(8) == 0) return nullptr;
  std::string text(engine.input->text(2000));
  text.resize(std::strlen(text.c_str()));
  engine.texts += text;
  engine.text = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(engine.text.get(), text.c_str(), text.size() + 1);
  return engine.text.get();
}

const wchar_t* result_unicode() {
  if (engine.input->below(8) == 0) return nullptr;
  const std::string_view bytes = engine.input->text(2000);
  const std::size_t cells = bytes.size() / sizeof(wchar_t);
  engine.wide = std::make_unique<wchar_t[]>(cells + 1);
  if (cells > 0) std::memcpy(engine.wide.get(), bytes.data(), cells * sizeof(wchar_t));
  engine.wides += engine.wide.get();
  return engine.wide.get();
}

int result_json(char* buffer, int size) {
  FuzzInput& input = *engine.input;
  const auto room = static_cast<std::size_t>(size);
  const int kind = input.below(64);
  if (kind == 63) std::memset(buffer, 'j', room);
  const std::string_view json = input.text(2000);
  std::memcpy(kind == 1 ? buffer + room - json.size() : buffer, json.data(), json.size());
  engine.jsons.back().assign(buffer, strnlen(buffer, room));
  return input.below(3);
}

}  // namespace

UnrulyEngine& unruly_engine() {
  return engine;
}

void plug_in(QVOcrEngine& slots) {
  slots._qv_set_image_data = set_image_data;
  slots._qv_recognize = recognize;
  slots._qv_get_lines_num = lines_num;
  slots._qv_get_line_info_ex = line_info;
  slots._qv_get_result_ex = result_ex;
  slots._qv_get_result_unicode = result_unicode;
  slots._qv_get_result_json = result_json;
}
