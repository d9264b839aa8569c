// SPDX-License-Identifier: Apache-2.0
#include "elf_symbols.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace engine_check {
namespace {

class ElfFile {
 public:
  explicit ElfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    header_ = at<Elf64_Ehdr>(0, 0);
    if (std::memcmp(header_.e_ident, ELFMAG, SELFMAG) != 0 ||
        header_.e_ident[EI_CLASS] != ELFCLASS64) {
      throw std::runtime_error("not a 64-bit ELF file");
    }
  }

  // The index-th record of a table that starts at `offset`.
  template <typename Record>
  Record at(std::size_t offset, std::size_t index) const {
    Record record;
    const std::size_t begin = offset + index * sizeof record;
    if (begin > bytes_.size() || bytes_.size() - begin < sizeof record) {
      throw std::runtime_error("a table lies behind the end of the file");
    }
    std::memcpy(&record, bytes_.data() + begin, sizeof record);
    return record;
  }

  std::size_t sections() const { return header_.e_shnum; }
  Elf64_Shdr section(std::size_t index) const { return at<Elf64_Shdr>(header_.e_shoff, index); }

  std::string text(std::size_t offset) const {
    return offset < bytes_.size() ? std::string(bytes_.c_str() + offset) : std::string();
  }

 private:
  std::string bytes_;
  Elf64_Ehdr header_;
};

bool is_exported(const Elf64_Sym& symbol) {
  // Names of versions are absolute.
  if (symbol.st_shndx == SHN_UNDEF || symbol.st_shndx == SHN_ABS) return false;
  const auto visibility = ELF64_ST_VISIBILITY(symbol.st_other);
  return ELF64_ST_BIND(symbol.st_info) != STB_LOCAL && visibility != STV_HIDDEN &&
         visibility != STV_INTERNAL;
}

}  // namespace

std::vector<std::string> exported_symbols(const std::string& path) {
  const ElfFile file(path);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < file.sections(); ++i) {
    const Elf64_Shdr table = file.section(i);
    if (table.sh_type != SHT_DYNSYM) continue;
    const std::size_t strings = file.section(table.sh_link).sh_offset;
    for (std::size_t k = 0; k < table.sh_size / sizeof(Elf64_Sym); ++k) {
      const auto symbol = file.at<Elf64_Sym>(table.sh_offset, k);
      if (is_exported(symbol)) names.push_back(file.text(strings + symbol.st_name));
    }
  }
  if (names.empty()) throw std::runtime_error("no dynamic symbols found");
  return names;
}

}  // namespace engine_check
