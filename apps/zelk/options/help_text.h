// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_HELP_TEXT_H
#define ZELK_APPS_OPTIONS_HELP_TEXT_H

namespace cli {

extern const char* const kHelpDescription;  // above the options
extern const char* const kHelpFooter;       // below them: outputs, exit codes, examples

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_HELP_TEXT_H
