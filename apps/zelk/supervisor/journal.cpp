// SPDX-License-Identifier: Apache-2.0
#include "supervisor/journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <system_error>

#include "exchange/cbor.h"
#include "exchange/error.h"
#include "exchange/files.h"

namespace cli {
namespace {

using Json = nlohmann::json;

const char* const kDelivered = "delivered";

// What tells an output that was left alone from one that was changed.
Json state_of(const std::string& output) {
  struct stat info = {};
  if (stat(output.c_str(), &info) != 0) return nullptr;
  return {info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

Json to_json(const DocumentOutcome& outcome) {
  Json pages = Json::array();
  for (const PageOutcome& page : outcome.pages) {
    pages.push_back({page.page, page.failure, page.warning, page.seconds, page.memory_kib,
                     page.is_unreadable, page.has_own_text});
  }
  Json outputs = Json::array();
  for (const std::string& output : outcome.outputs) outputs.push_back({output, state_of(output)});
  return {{"state", outcome.state},           {"notice", outcome.notice},
          {"page_count", outcome.page_count}, {"seconds", outcome.seconds},
          {"outputs", std::move(outputs)},    {"pages", std::move(pages)}};
}

DocumentOutcome from_json(const Json& json) {
  DocumentOutcome outcome;
  outcome.state = json.at("state");
  outcome.notice = json.at("notice");
  outcome.page_count = json.at("page_count");
  outcome.seconds = json.at("seconds");
  for (const Json& output : json.at("outputs")) outcome.outputs.push_back(output.at(0));
  for (const Json& page : json.at("pages")) {
    outcome.pages.push_back(
        {page.at(0), page.at(1), page.at(2), page.at(3), page.at(4), true, page.at(5), page.at(6)});
  }
  return outcome;
}

bool outputs_are_untouched(const Json& json) {
  for (const Json& output : json.at("outputs")) {
    const Json state = state_of(output.at(0).get<std::string>());
    if (state.is_null() || state != output.at(1)) return false;
  }
  return true;
}

}  // namespace

Journal::Journal(const std::string& output_folder, bool resume)
    : _path(output_folder + "/.zelk-journal"), _resume(resume) {
  make_folders(_path);
}

Journal::~Journal() {
  std::error_code ignored;
  while (!_locks.empty()) close_document(std::string(_locks.begin()->first));
  for (const std::string& key : _keys) {
    // What is kept goes all the same when it is empty.
    if (!_keep_all) std::filesystem::remove_all(folder_of(key), ignored);
    std::filesystem::remove(folder_of(key), ignored);
  }
  std::filesystem::remove(_path, ignored);  // fails as long as something is kept
}

std::optional<std::string> Journal::open_document(const std::string& key) {
  const std::string folder = folder_of(key);
  make_folders(folder);
  const int lock = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (lock < 0 || flock(lock, LOCK_EX | LOCK_NB) != 0) {
    if (lock >= 0) close(lock);
    return {};
  }
  _locks[key] = lock;
  _keys.insert(key);
  if (!_resume) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
      std::filesystem::remove_all(entry.path(), ignored);
    }
  }
  return folder;
}

std::optional<DocumentOutcome> Journal::delivered(const std::string& key,
                                                  const std::string& order) const {
  const std::optional<std::string> bytes = read_file(folder_of(key) + "/" + kDelivered);
  if (!_resume || !bytes) return {};
  try {
    const Json json = parse_cbor(*bytes);
    if (json.at("order") != order || !outputs_are_untouched(json)) return {};
    return from_json(json);
  } catch (const Json::exception&) {
    return {};
  }
}

void Journal::mark_delivered(const std::string& key, const std::string& order,
                             const DocumentOutcome& outcome) {
  const std::string folder = folder_of(key);
  Json json = to_json(outcome);
  json["order"] = order;
  const std::vector<std::uint8_t> bytes = Json::to_cbor(json);
  write_file(folder + "/delivered.new",
             {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  move_file(folder + "/delivered.new", folder + "/" + kDelivered);
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
    if (entry.path().filename() != kDelivered) std::filesystem::remove(entry.path(), ignored);
  }
  close_document(key);
}

void Journal::close_document(const std::string& key) {
  const auto lock = _locks.find(key);
  if (lock == _locks.end()) return;
  close(lock->second);
  _locks.erase(lock);
}

}  // namespace cli
