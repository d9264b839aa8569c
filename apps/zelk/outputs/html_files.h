// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_OUTPUTS_HTML_FILES_H
#define ZELK_APPS_OUTPUTS_HTML_FILES_H

#include <string_view>

namespace cli {

// The files of html/, embedded by the build. @NAME@ in the templates is where a value goes.
extern const std::string_view kPageHtml;     // the document
extern const std::string_view kSectionHtml;  // one page of it
extern const std::string_view kScriptJs;
extern const std::string_view kStyleCss;

}  // namespace cli

#endif  // ZELK_APPS_OUTPUTS_HTML_FILES_H
