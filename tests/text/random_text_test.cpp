// SPDX-License-Identifier: Apache-2.0
// Random text through every conversion, compared with a second implementation that is written for
// plainness.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "text/StringFormat.h"
#include "text/plain_conversions.h"

namespace {

using qv::StringFormat;
using namespace plain;

constexpr int kRounds = 20000;

// ---- random text -------------------------------------------------------------------------------

class RandomText : public ::testing::Test {
 protected:
  unsigned below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }

  // Runs of ASCII of all lengths round a block, between stretches of the bytes that decide
  // something.
  std::string bytes() {
    static constexpr unsigned char kTelling[] = {0x00, 0x41, 0x7F, 0x80, 0x85, 0x9F, 0xA0, 0xAF,
                                                 0xB0, 0xB7, 0xB8, 0xBF, 0xC0, 0xC3, 0xDF, 0xE0,
                                                 0xE4, 0xED, 0xEF, 0xF0, 0xF4, 0xF7, 0xF8, 0xFF};
    std::string text;
    for (unsigned part = below(6); part > 0; --part) {
      const unsigned kind = below(3);
      for (unsigned i = below(40); i > 0; --i) {
        text += static_cast<char>(kind == 0   ? 0x20 + below(0x5F)
                                  : kind == 1 ? below(255) + 1
                                              : kTelling[below(sizeof kTelling)]);
      }
    }
    return text;
  }

  // The same for units, none of them zero.
  Units units() {
    Units text;
    for (unsigned part = below(6); part > 0; --part) {
      const unsigned kind = below(4);
      for (unsigned i = below(40); i > 0; --i) {
        text.push_back(static_cast<unsigned short>(kind == 0   ? 0x20 + below(0x5F)
                                                   : kind == 1 ? 1 + below(0xFFFF)
                                                   : kind == 2 ? 0xD7F8 + below(0x810)
                                                               : 0x70 + below(0x20)));
      }
    }
    return text;
  }

 private:
  std::mt19937 random_{20240607};
};

}  // namespace

TEST_F(RandomText, BytesToUnits) {
  for (int round = 0; round < kRounds; ++round) {
    const std::string text = bytes();
    const Expected expected = expectUnits(text);

    Units out(text.size() + 1, 0xEEEE);
    const int count = static_cast<int>(text.size());
    ASSERT_EQ(StringFormat::utf8toutf16(out.data(), text.data(), count),
              static_cast<int>(expected.bytesRead));
    Units padded = expected.units;
    padded.resize(out.size(), 0xEEEE);
    ASSERT_EQ(out, padded);
    ASSERT_EQ(StringFormat::utf8toutf16(nullptr, text.data(), count),
              static_cast<int>(expected.units.size()) - (expected.terminated ? 1 : 0));
  }
}

TEST_F(RandomText, BytesToUnitsUpToTheNul) {
  for (int round = 0; round < kRounds; ++round) {
    const std::string text = bytes();
    const Expected expected = expectUnits(std::string(text.c_str()) + '\0');
    Units out(expected.units.size(), 0xEEEE);
    ASSERT_EQ(StringFormat::utf8toutf16(out.data(), text.c_str(), -1),
              static_cast<int>(expected.bytesRead));
    ASSERT_EQ(out, expected.units);
  }
}

TEST_F(RandomText, BytesToWideCells) {
  for (int round = 0; round < kRounds; ++round) {
    const std::string text = bytes();
    const Expected expected = expectUnits(std::string(text.c_str()) + '\0');
    const std::wstring wide(expected.units.begin(), expected.units.end() - 1);
    ASSERT_EQ(StringFormat::strtowstr(text), wide);

    const std::size_t capacity = below(static_cast<unsigned>(text.size()) + 4);
    std::wstring cells(capacity, L'.');
    const int result =
        StringFormat::utf8towchar(cells.data(), text.c_str(), static_cast<int>(capacity));
    if (expected.bytesRead > capacity) {
      ASSERT_EQ(result, static_cast<int>(expected.bytesRead));
      ASSERT_EQ(cells, std::wstring(capacity, L'.'));
    } else {
      ASSERT_EQ(result, 0);
      std::wstring filled = wide;
      filled.resize(capacity, L'\0');
      ASSERT_EQ(cells, filled);
    }
  }
}

TEST_F(RandomText, UnitsToBytesInEveryCapacity) {
  for (int round = 0; round < kRounds; ++round) {
    Units text = units();
    const std::vector<std::string> characters = expectCharacters(text);
    text.push_back(0);

    std::size_t total = 0;
    for (const std::string& character : characters) total += character.size();
    ASSERT_EQ(StringFormat::utf16toutf8(nullptr, text.data(), 0), static_cast<int>(total));

    const std::size_t capacity = below(static_cast<unsigned>(total) + 6);
    std::string expected;
    bool whole = true;
    for (const std::string& character : characters) {
      whole = whole && expected.size() + character.size() <= capacity;
      if (whole) expected += character;
    }
    const int written = static_cast<int>(expected.size());
    if (whole && expected.size() < capacity) expected += '\0';
    expected.resize(capacity, '.');

    std::string out(capacity, '.');
    ASSERT_EQ(StringFormat::utf16toutf8(out.data(), text.data(), static_cast<int>(capacity)),
              written);
    ASSERT_EQ(out, expected);
  }
}

TEST_F(RandomText, WideCellsToBytesKeepOnlyTheLow16Bits) {
  for (int round = 0; round < kRounds; ++round) {
    Units text = units();
    std::wstring wide;
    for (const unsigned short value : text) {
      const unsigned high = below(4) == 0 ? below(0x7FFF) << 16 : 0;
      wide += static_cast<wchar_t>(high | value);
    }
    std::string expected;
    for (const std::string& character : expectCharacters(text)) expected += character;
    ASSERT_EQ(StringFormat::wstrtostr(wide), expected);

    std::string out(expected.size() + 1, '.');
    ASSERT_EQ(StringFormat::wchartoutf8(out.data(), wide.c_str(), static_cast<int>(out.size())),
              static_cast<int>(expected.size()));
    ASSERT_EQ(out, expected + '\0');
  }
}

TEST_F(RandomText, WellFormedTextComesBack) {
  for (int round = 0; round < kRounds; ++round) {
    std::string text;
    for (unsigned i = below(60); i > 0; --i) {
      const unsigned kind = below(4);
      text += bytesOf(kind == 0   ? 1 + below(0x7F)
                      : kind == 1 ? 0x80 + below(0x780)
                      : kind == 2 ? 0x800 + below(0xD000)
                                  : 0x10000 + below(0x100000));
    }
    ASSERT_EQ(StringFormat::wstrtostr(StringFormat::strtowstr(text)), text);
  }
}
