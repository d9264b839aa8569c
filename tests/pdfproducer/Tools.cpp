// SPDX-License-Identifier: Apache-2.0
#include "pdfproducer/Tools.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>

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

// Text between two marks; empty where one of them is missing.
std::string between(const std::string& text, const std::string& before, const std::string& after) {
  const std::size_t start = text.find(before);
  if (start == std::string::npos) return "";
  const std::size_t end = text.find(after, start + before.size());
  if (end == std::string::npos) return "";
  return text.substr(start + before.size(), end - start - before.size());
}

// Number of the object behind a label in qpdf's list of the pages, such as "/I0: 7 0 R".
std::string listed_object(const std::string& path, int page, const std::string& label) {
  const std::string pages = run("qpdf --show-pages --with-images '" + path + "'").output;
  const std::size_t start = pages.find("page " + std::to_string(page) + ":");
  if (start == std::string::npos) return "";
  const std::string reference = between(pages.substr(start), label, " 0 R");
  return reference.substr(reference.find_first_of("0123456789"));
}

}  // namespace

std::string page_content(const std::string& path, int page) {
  return qpdf_object(path, listed_object(path, page, "content:"));
}

std::string page_image(const std::string& path, int page) {
  const std::string object = listed_object(path, page, "/I0:");
  return run("qpdf '" + path + "' --show-object=" + object + " --raw-stream-data").output;
}

std::string poppler_text(const std::string& path) {
  return run("pdftotext -raw '" + path + "' -").output;
}

std::string pdfinfo(const std::string& path, const std::string& key) {
  const std::string lines = '\n' + run("pdfinfo '" + path + "'").output;
  const std::string value = between(lines, '\n' + key + ':', "\n");
  return value.empty() ? lines : value.substr(value.find_first_not_of(' '));
}
