// SPDX-License-Identifier: Apache-2.0
#include "exchange/cbor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace cli {
namespace {

using Json = nlohmann::json;

constexpr std::size_t kDeepest = 16;  // arrays and maps within each other

// The head that every item begins with: its kind and a number. What is no head has no kind.
struct Head {
  enum Kind { kBytes = 2, kText = 3, kArray = 4, kMap = 5, kTag = 6, kNone = 8 };
  int kind = kNone;
  std::uint64_t number = 0;
};

// Takes a head off the bytes. Numbers that are not told, which stand for parts until an end, are
// refused: nothing that zelk writes has them.
Head take_head(std::string_view& bytes) {
  if (bytes.empty()) return {};
  const auto first = static_cast<unsigned char>(bytes.front());
  bytes.remove_prefix(1);
  Head head{first >> 5, first & 0x1FU};
  if (head.number < 24) return head;
  const std::size_t size = head.number < 28 ? std::size_t{1} << (head.number - 24) : 0;
  if (size == 0 || bytes.size() < size) return {};
  head.number = 0;
  for (const char byte : bytes.substr(0, size)) {
    head.number = head.number << 8 | static_cast<unsigned char>(byte);
  }
  bytes.remove_prefix(size);
  return head;
}

// True when the bytes can be read with little of the stack: the reader calls itself for each array
// and each map, and for each part of a text within a part.
bool is_shallow(std::string_view bytes) {
  std::vector<std::uint64_t> due = {1};  // items yet to come, of each array or map that is open
  while (!due.empty()) {
    if (due.back() == 0) {
      due.pop_back();
      continue;
    }
    --due.back();
    const Head head = take_head(bytes);
    const bool has_items = head.kind == Head::kArray || head.kind == Head::kMap;
    const bool has_bytes = head.kind == Head::kBytes || head.kind == Head::kText;
    if (head.kind == Head::kTag || head.kind == Head::kNone) return false;
    if ((has_items || has_bytes) && head.number > bytes.size()) return false;
    if (has_bytes) bytes.remove_prefix(head.number);
    if (has_items) due.push_back(head.kind == Head::kMap ? 2 * head.number : head.number);
    if (due.size() > 1 + kDeepest) return false;
  }
  return true;
}

// A field that holds an int may have been given any number.
void limit_numbers(Json& value) {
  if (value.is_structured()) {
    for (Json& element : value) limit_numbers(element);
  } else if (value.is_number_float()) {
    const double number = value.get<double>();
    constexpr double kLowest = std::numeric_limits<int>::min();
    constexpr double kHighest = std::numeric_limits<int>::max();
    value = std::isnan(number) ? 0.0 : std::clamp(number, kLowest, kHighest);
  }
}

}  // namespace

Json parse_cbor(std::string_view bytes) {
  if (!is_shallow(bytes)) return nullptr;
  constexpr bool kWholeText = true;
  constexpr bool kThrows = false;
  Json value = Json::from_cbor(bytes, kWholeText, kThrows);
  if (value.is_discarded()) return nullptr;
  limit_numbers(value);
  return value;
}

}  // namespace cli
