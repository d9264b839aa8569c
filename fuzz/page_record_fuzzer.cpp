// SPDX-License-Identifier: Apache-2.0
// Page records as a worker or an earlier run may have left them. The checksum is put right first,
// or no changed record would be looked into. What is read has to survive writing.
#include "exchange/page_record.h"

#include <zlib.h>

#include "fuzz_input.h"

namespace {

std::string with_checksum(std::string_view bytes) {
  const std::size_t body = bytes.size() < 4 ? 0 : bytes.size() - 4;
  std::string whole(bytes.substr(0, body));
  const auto sum = static_cast<std::uint32_t>(
      crc32_z(0, reinterpret_cast<const unsigned char*>(whole.data()), whole.size()));
  return whole.append(reinterpret_cast<const char*>(&sum), sizeof sum);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = FuzzInput(data, size).rest();
  cli::decode_page_record(bytes);
  const auto record = cli::decode_page_record(with_checksum(bytes));
  if (!record) return 0;
  cli::PageRecord copy = *record;
  copy.warning = record->is_unreadable ? "unreadable" : record->warning;
  copy.warning += record->has_own_text ? "text" : "";
  const std::string written = cli::encode_page_record(*record);
  const auto again = cli::decode_page_record(written);
  require(again.has_value(), "a written record can be read");
  require(cli::encode_page_record(*again) == written, "a record comes back as it was");
  require(cli::decode_page_record(cli::encode_page_record(copy)).has_value(), "so does another");
  return 0;
}
