// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_UTF8_H
#define ZELK_ENGINE_CHECK_UTF8_H

#include <optional>
#include <string>

namespace engine_check {

// The code points of a UTF-8 text; nothing when it is malformed (overlong forms, surrogates and
// values beyond U+10FFFF included).
std::optional<std::wstring> from_utf8(const std::string& text);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_UTF8_H
