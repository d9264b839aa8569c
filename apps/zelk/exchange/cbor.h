// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_CBOR_H
#define ZELK_APPS_EXCHANGE_CBOR_H

#include <nlohmann/json.hpp>
#include <string_view>

namespace cli {

// The value that CBOR holds; null for bytes that are none, for values nested deeper than any
// message needs and for texts told in parts: reading those could exhaust the stack. Floating-point
// numbers are brought into the range of an int, so that every number can be taken for any field.
nlohmann::json parse_cbor(std::string_view bytes);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_CBOR_H
