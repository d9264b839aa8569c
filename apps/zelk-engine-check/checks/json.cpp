// SPDX-License-Identifier: Apache-2.0
// JSON, in buffers of several sizes.
#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <nlohmann/json.hpp>

#include "check.h"
#include "session.h"

namespace engine_check {
namespace {

constexpr char kUntouched = '\x5A';
constexpr std::size_t kGuards = 1 << 16;
constexpr const char* kNotAsked = "not asked for: qv_recognize has failed";

void examine(Session& session, std::size_t size, Verdict& verdict) {
  std::string buffer(size, '\0');
  buffer.append(kGuards, kUntouched);
  session.engine().get_result_json(buffer.data(), static_cast<int>(size));
  const std::size_t touched = buffer.find_last_not_of(kUntouched);
  if (touched != std::string::npos && touched >= size) {
    verdict.fail(fmt::format("{} bytes are written behind it", touched + 1 - size));
  }
  const std::size_t length = strnlen(buffer.data(), size);
  if (length == size) {
    verdict.fail("no zero byte within it");
  } else if (length > 0 && !nlohmann::json::accept(buffer.substr(0, length))) {
    verdict.fail(fmt::format("{} bytes that are not JSON", length));
  }
  verdict.note(length == 0 ? "no text" : fmt::format("JSON of {} bytes", length));
}

template <std::size_t Size>
void in_buffer(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  if (session.set_and_recognize(subject.page) != 0) return verdict.note(kNotAsked);
  examine(session, Size, verdict);
}

void of_white_page(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  if (session.set_and_recognize(uniform_page(400, 300, 255)) != 0) return verdict.note(kNotAsked);
  examine(session, 4096000, verdict);
}

constexpr const char* kExpected = "JSON or nothing, and a zero byte, within the buffer";

constexpr Check kChecks[] = {
    {"json.4096000-bytes", kExpected, in_buffer<4096000>},
    {"json.4096-bytes", kExpected, in_buffer<4096>},
    {"json.16-bytes", kExpected, in_buffer<16>},
    {"json.1-byte", kExpected, in_buffer<1>},
    {"json.white-page", kExpected, of_white_page},
};

}  // namespace

std::span<const Check> json_checks() {
  return kChecks;
}

}  // namespace engine_check
