// SPDX-License-Identifier: Apache-2.0
#include "exchange/messages.h"

#include <nlohmann/json.hpp>
#include <utility>

#include "exchange/cbor.h"

namespace cli {

// CBOR carries the messages: unlike JSON text it holds file names of any bytes.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PageOptions, dpi, max_pixels, skip_text, strict)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(StartOrder, engine_dir, memory_limit_mib, page, password,
                                   pictures, sandbox, readable)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(OpenOrder, input, digest)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PagesOrder::Page, number, index)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PagesOrder, input, pages, name)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(OutputOrder, file, page_count, pages, page_break)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(AssembleOrder::Target, format, file)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(AssembleOrder, document, targets)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Ready, failure, sandbox_gap)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Opened::Page, width, height)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Opened, pages, digest, decrypted)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(Refused, reason, needs_password)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PageStarted, number)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PageFinished, number, failure, is_unreadable, is_damaged,
                                   has_own_text, warning, seconds, memory_kib)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(JobFailed, reason, is_output)

namespace {

using Json = nlohmann::json;

template <typename Message>
Json body_of(const Message& message) {
  if constexpr (std::is_empty_v<Message>) {
    return Json::object();
  } else {
    return message;
  }
}

template <typename Message>
Message message_of(const Json& body) {
  if constexpr (std::is_empty_v<Message>) {
    return {};
  } else {
    return body.get<Message>();
  }
}

// [which, body]
template <typename... Messages>
std::string encode(const std::variant<Messages...>& message) {
  const Json body = std::visit([](const auto& value) { return body_of(value); }, message);
  const std::vector<std::uint8_t> bytes = Json::to_cbor(Json::array({message.index(), body}));
  return {bytes.begin(), bytes.end()};
}

template <typename Variant, std::size_t... Indices>
std::optional<Variant> decode_as(std::size_t which, const Json& body,
                                 std::index_sequence<Indices...>) {
  std::optional<Variant> result;
  static_cast<void>(
      ((which == Indices
            ? (result = message_of<std::variant_alternative_t<Indices, Variant>>(body), true)
            : false) ||
       ...));
  return result;
}

template <typename Variant>
std::optional<Variant> decode(std::string_view bytes) {
  try {
    const Json json = parse_cbor(bytes);
    const Json& which = json.at(0);
    if (!which.is_number_unsigned()) return {};
    return decode_as<Variant>(which.get<std::size_t>(), json.at(1),
                              std::make_index_sequence<std::variant_size_v<Variant>>());
  } catch (const Json::exception&) {
    return {};
  }
}

}  // namespace

std::string encode_order(const Order& order) {
  return encode(order);
}

std::string encode_event(const Event& event) {
  return encode(event);
}

std::optional<Order> decode_order(std::string_view bytes) {
  return decode<Order>(bytes);
}

std::optional<Event> decode_event(std::string_view bytes) {
  return decode<Event>(bytes);
}

}  // namespace cli
