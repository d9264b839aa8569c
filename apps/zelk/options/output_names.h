// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OPTIONS_OUTPUT_NAMES_H
#define ZELK_APPS_OPTIONS_OUTPUT_NAMES_H

#include <string>
#include <vector>

#include "options/input_arguments.h"

namespace cli {

// A name without a format's extension for the outputs of each document, below the folder of -d.
// They are all different where that can be had; documents that no other gets in the way of have the
// short one, so that a further input moves the outputs of those only that it gets in the way of.
std::vector<std::string> distinct_names(const std::vector<FoundInput>& inputs);

}  // namespace cli

#endif  // ZELK_APPS_OPTIONS_OUTPUT_NAMES_H
