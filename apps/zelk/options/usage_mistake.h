// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_USAGE_MISTAKE_H
#define ZELK_APPS_OPTIONS_USAGE_MISTAKE_H

#include <string>

namespace CLI {
class App;
class ParseError;
}  // namespace CLI

namespace cli {

// What is wrong with a command line, in one line that names the argument and what can be done.
std::string usage_mistake(const CLI::App& app, const CLI::ParseError& error);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_USAGE_MISTAKE_H
