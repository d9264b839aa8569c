// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/Tools.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <regex>

Outcome run(const std::string& command) {
  Outcome outcome;
  std::FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 65536> buffer;
  for (std::size_t n; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
    outcome.output.append(buffer.data(), n);
  }
  const int status = pclose(pipe);
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return outcome;
}

std::string qpdf_complaint(const std::string& path) {
  const Outcome check = run("qpdf --check '" + path + "'");
  const bool warned = check.output.find("WARNING") != std::string::npos;
  return check.status == 0 && !warned
             ? ""
             : "exit " + std::to_string(check.status) + ": " + check.output;
}

std::string qpdf_object(const std::string& path, const std::string& object) {
  const std::string data = object == "trailer" ? "" : " --filtered-stream-data";
  const Outcome shown = run("qpdf '" + path + "' --show-object=" + object + data);
  if (shown.status == 0) return shown.output;
  return run("qpdf '" + path + "' --show-object=" + object).output;
}

namespace {

// Object number behind a label in qpdf's list of the pages.
std::string listed_object(const std::string& path, int page, const std::string& label) {
  const std::string pages = run("qpdf --show-pages --with-images '" + path + "'").output;
  const std::size_t start = pages.find("page " + std::to_string(page) + ":");
  std::smatch match;
  const std::string rest = start == std::string::npos ? "" : pages.substr(start);
  if (!std::regex_search(rest, match, std::regex(label + "[^0-9]*[^:]*?(\\d+) 0 R"))) return "";
  return match[1];
}

}  // namespace

std::string page_content(const std::string& path, int page) {
  return qpdf_object(path, listed_object(path, page, "content:"));
}

std::string page_image(const std::string& path, int page) {
  const std::string object = listed_object(path, page, "images:\\s+/I\\d+:");
  return run("qpdf '" + path + "' --show-object=" + object + " --raw-stream-data").output;
}

std::string poppler_text(const std::string& path) {
  return run("pdftotext -raw '" + path + "' -").output;
}

std::string pdfinfo(const std::string& path, const std::string& key) {
  const std::string lines = run("pdfinfo '" + path + "'").output;
  std::smatch match;
  if (!std::regex_search(lines, match, std::regex("(^|\n)" + key + ": *([^\n]*)"))) return lines;
  return match[2];
}
