// SPDX-License-Identifier: Apache-2.0
// Widening and narrowing 4 MB of recognition results against iconv doing the nearest equivalent.
// iconv converts into a buffer that exists already; wstrtostr also pays for the string that it
// returns.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "side_by_side.h"
#include "text/StringFormat.h"

namespace {

using qv::StringFormat;

constexpr std::size_t kSize = 4 << 20;

// Results as an engine writes them: numbers and names round each line's text.
std::string jsonOf(const std::string& line) {
  std::string json = "{\"lines\":[";
  for (unsigned i = 0; json.size() < kSize; ++i) {
    const std::string top = std::to_string(100 + i % 3000);
    json.append("{\"text\":\"").append(line);
    json.append("\",\"box\":[120,").append(top).append(",2210,48],\"confidence\":96},\n");
  }
  return json.substr(0, json.rfind(',')) + "]}";
}

const std::string& english() {
  static const std::string json =
      jsonOf("The harbour master signed for eleven crates before noon, and two after it.");
  return json;
}

const std::string& chinese() {
  static const std::string json =
      jsonOf("港务长在中午之前签收了十一箱货物，午后又签收了两箱，并记入当日的账册。");
  return json;
}

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() { iconv_close(handle_); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Returns the bytes written; a conversion that does not finish would make the comparison void.
  std::size_t run(const void* from, std::size_t size, void* to, std::size_t capacity) {
    char* input = const_cast<char*>(static_cast<const char*>(from));
    char* output = static_cast<char*>(to);
    const std::size_t room = capacity;
    if (iconv(handle_, &input, &size, &output, &capacity) != 0 || size != 0) std::abort();
    return room - capacity;
  }

 private:
  iconv_t handle_;
};

void widen(benchmark::State& state, const std::string& json, bool throughUtf16) {
  std::vector<wchar_t> ours(json.size() + 1);
  std::vector<wchar_t> theirs(json.size() + 1);
  std::vector<char16_t> units(json.size() + 1);
  Converter toUtf16("UTF-16LE", "UTF-8");
  Converter toWide("WCHAR_T", "UTF-8");
  const auto reference = [&] {
    if (throughUtf16) {
      const std::size_t size =
          toUtf16.run(json.data(), json.size(), units.data(), units.size() * sizeof units[0]);
      std::copy_n(units.data(), size / sizeof units[0], theirs.data());
    } else {
      toWide.run(json.data(), json.size(), theirs.data(), theirs.size() * sizeof theirs[0]);
    }
    benchmark::ClobberMemory();
  };
  bench::sideBySide(
      state,
      [&] {
        StringFormat::utf8towchar(ours.data(), json.c_str(), static_cast<int>(ours.size()));
        benchmark::ClobberMemory();
      },
      reference);
  if (ours != theirs) state.SkipWithError("the results differ");
}

void narrow(benchmark::State& state, const std::string& json) {
  const std::wstring wide = StringFormat::strtowstr(json);
  const std::u16string units(wide.begin(), wide.end());
  std::vector<char> theirs(json.size() + 1);
  Converter toUtf8("UTF-8", "UTF-16LE");
  bench::sideBySide(
      state, [&] { benchmark::DoNotOptimize(StringFormat::wstrtostr(wide)); },
      [&] {
        toUtf8.run(units.data(), units.size() * sizeof units[0], theirs.data(), theirs.size());
        benchmark::ClobberMemory();
      });
  if (StringFormat::wstrtostr(wide) != theirs.data()) state.SkipWithError("the results differ");
}

}  // namespace

#define ZELK_TEXT_BENCHMARK(...) \
  BENCHMARK_CAPTURE(__VA_ARGS__)->UseManualTime()->Unit(benchmark::kMillisecond)
ZELK_TEXT_BENCHMARK(widen, english_iconv_wchar, english(), false);
ZELK_TEXT_BENCHMARK(widen, english_iconv_utf16, english(), true);
ZELK_TEXT_BENCHMARK(widen, chinese_iconv_wchar, chinese(), false);
ZELK_TEXT_BENCHMARK(widen, chinese_iconv_utf16, chinese(), true);
ZELK_TEXT_BENCHMARK(narrow, english_iconv_utf16, english());
ZELK_TEXT_BENCHMARK(narrow, chinese_iconv_utf16, chinese());
#undef ZELK_TEXT_BENCHMARK
