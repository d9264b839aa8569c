// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_TERMINAL_TEXT_H
#define ZELK_APPS_EXCHANGE_TERMINAL_TEXT_H

#include <string>
#include <string_view>

namespace cli {

// Recognised text on its way to a terminal, which obeys control characters: what stands on a page
// must not clear the screen or rename the window. Tab, line feed and form feed stay; U+FFFD stands
// for other control characters and for bytes that are not UTF-8. A carriage return before a line
// feed goes.
class TerminalText {
 public:
  // What can be shown of the text so far and of these bytes behind it. The start of a character
  // waits for its end.
  std::string take(std::string_view bytes);
  // What still waits when the text is over.
  std::string rest();

 private:
  std::string _waiting;
};

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_TERMINAL_TEXT_H
