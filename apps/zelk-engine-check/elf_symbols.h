// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_ENGINE_CHECK_ELF_SYMBOLS_H
#define ZELK_ENGINE_CHECK_ELF_SYMBOLS_H

#include <string>
#include <vector>

namespace engine_check {

// The names that a 64-bit ELF library defines for others, from its dynamic symbol table. Throws
// std::runtime_error when the file is something else.
std::vector<std::string> exported_symbols(const std::string& path);

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_ELF_SYMBOLS_H
